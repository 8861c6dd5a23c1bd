// SPDX-License-Identifier: MIT
// A disk that is nearly full, in the user's folder for local data.
#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>

/// What this process writes there has room, or has not, as a test wants it. One object at a time.
class SmallDisk {
 public:
  /// @return the disk that with-small-disk has mounted, or the files whose size can be limited
  /// because with-own-limits has started this program. Throws std::runtime_error without either.
  static std::unique_ptr<SmallDisk> OfThisProcess();
  /// @return the user's folder for local data.
  static std::filesystem::path Path();

  /// Makes room again.
  virtual ~SmallDisk() = default;

  /// Leaves room for so many bytes more; with a limit instead of a disk, for so many in each file.
  /// Throws std::runtime_error when that cannot be had.
  virtual void LeaveRoom(uint64_t bytes) = 0;
  /// Gives back all room there is. Throws like LeaveRoom.
  virtual void MakeRoom() = 0;
};
