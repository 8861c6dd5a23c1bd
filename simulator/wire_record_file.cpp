// SPDX-License-Identifier: MIT
#include "simulator/wire_record_file.h"

namespace simulator {

WireRecordFile::~WireRecordFile() {
  if (file_ != nullptr) std::fclose(file_);
}

bool WireRecordFile::Create(const std::string& path) {
  if (file_ != nullptr) std::fclose(file_);
  file_ = std::fopen(path.c_str(), "wb");
  whole_ = file_ != nullptr && WriteLine(kWireRecordTitle);
  return whole_;
}

bool WireRecordFile::Write(const WireDatagram& datagram) {
  whole_ = whole_ && WriteLine(WireRecordLine(datagram));
  return whole_;
}

bool WireRecordFile::Read(const std::string& path, RecordedFaults& faults, std::string& complaint) {
  std::FILE* file = std::fopen(path.c_str(), "rb");
  if (file == nullptr) {
    complaint = "cannot be read";
    return false;
  }
  std::string text;
  char part[4096];
  for (size_t count = 0; (count = std::fread(part, 1, sizeof part, file)) > 0;) {
    text.append(part, count);
    if (!text.starts_with(kWireRecordTitle)) break;  // it may have no end
  }
  const bool whole = std::ferror(file) == 0;
  std::fclose(file);
  if (!whole) complaint = "cannot be read";
  return whole && ReadWireRecord(text, faults, complaint);
}

bool WireRecordFile::WriteLine(const std::string& line) {
  return std::fputs((line + "\n").c_str(), file_) >= 0 && std::fflush(file_) == 0;
}

}  // namespace simulator
