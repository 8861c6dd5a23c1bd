// SPDX-License-Identifier: MIT
#include "tests/core/util/scarce_memory.h"

#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

std::atomic<size_t> largest = SIZE_MAX;

}  // namespace

ScarceMemory::ScarceMemory(size_t largestBytes) {
  largest = largestBytes;
}

ScarceMemory::~ScarceMemory() {
  largest = SIZE_MAX;
}

// The program's own: every plain `new` ends here. All forms whose memory comes back to the same
// `delete`, since a sanitizer has others.
void* operator new(size_t bytes, const std::nothrow_t&) noexcept {
  return bytes > largest ? nullptr : std::malloc(bytes == 0 ? 1 : bytes);
}

void* operator new(size_t bytes) {
  void* memory = operator new(bytes, std::nothrow);
  if (memory == nullptr) throw std::bad_alloc();
  return memory;
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}

void operator delete(void* memory, size_t) noexcept {
  std::free(memory);
}
