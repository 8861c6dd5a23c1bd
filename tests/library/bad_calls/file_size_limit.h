// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "tests/library/bad_calls/small_disk.h"

/// A limit of the machine under Wine to the size of the files that this process writes. Whoever may
/// run the process may set it. Writes behave as on a disk: what has room is written, then they
/// fail.
class FileSizeLimit : public SmallDisk {
 public:
  /// @param machineProcess this process's number on the machine under Wine
  explicit FileSizeLimit(const std::string& machineProcess) : machineProcess_(machineProcess) {}
  ~FileSizeLimit() override;

  void LeaveRoom(uint64_t bytes) override;
  void MakeRoom() override;

 private:
  /// @param limit  bytes, or "unlimited"
  /// @param probe  bytes to write for a look at whether the limit is in force
  /// @param fitting  how many of them have room then
  /// @return whether it came into force.
  bool Set(const std::string& limit, uint64_t probe, uint64_t fitting) const;

  std::string machineProcess_;
  uint64_t limit_ = 0;
};
