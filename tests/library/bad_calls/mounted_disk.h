// SPDX-License-Identifier: MIT
#pragma once

#include "tests/library/bad_calls/small_disk.h"

/// A disk of 1 MiB, filled by a file.
class MountedDisk : public SmallDisk {
 public:
  /// Throws std::runtime_error when there is more room than on such a disk.
  MountedDisk();
  ~MountedDisk() override;

  void LeaveRoom(uint64_t bytes) override;
  void MakeRoom() override;
};
