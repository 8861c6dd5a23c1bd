// SPDX-License-Identifier: MIT
// A machine that has no large blocks of memory left.
#pragma once

#include <cstddef>

/// As long as the object lives, `new` throws std::bad_alloc for more than some bytes. One at a
/// time; meant for programs in which no other thread needs memory meanwhile.
class ScarceMemory {
 public:
  explicit ScarceMemory(size_t largestBytes);
  ~ScarceMemory();
  ScarceMemory(const ScarceMemory&) = delete;
  ScarceMemory& operator=(const ScarceMemory&) = delete;
};
