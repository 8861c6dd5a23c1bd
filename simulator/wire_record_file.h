// SPDX-License-Identifier: MIT
// The file of a wire's record: written line by line while the wire runs, read as a whole for a
// replay. One thread at a time.
#pragma once

#include <cstdio>
#include <string>

#include "simulator/wire_record.h"

namespace simulator {

class WireRecordFile {
 public:
  WireRecordFile() = default;
  ~WireRecordFile();
  WireRecordFile(const WireRecordFile&) = delete;
  WireRecordFile& operator=(const WireRecordFile&) = delete;

  /// Makes a new file or empties an old one. @return false when it cannot be written.
  bool Create(const std::string& path);
  /// Adds a line, which is in the file when the call returns.
  /// @return false when it is not: there is no file, or this line or one before it could not be
  ///         written, the disk being full. Such a file gets no further line.
  bool Write(const WireDatagram& datagram);

  /// Reads the faults of a file, and of anything else no more than shows that it is none.
  /// @param complaint gets a line for a person on failure
  static bool Read(const std::string& path, RecordedFaults& faults, std::string& complaint);

 private:
  bool WriteLine(const std::string& line);

  std::FILE* file_ = nullptr;
  bool whole_ = false;  // every line is in the file
};

}  // namespace simulator
