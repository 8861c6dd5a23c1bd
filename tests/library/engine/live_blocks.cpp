// SPDX-License-Identifier: MIT
#include "tests/library/engine/live_blocks.h"

#include <atomic>
#include <cstddef>

namespace {

std::atomic<int> liveBlocks = 0;

}  // namespace

int LiveBlocks() {
  return liveBlocks;
}

// The linker sends plain `new` and `delete` here (CMakeLists.txt); they go on to the real ones,
// which a sanitizer has of its own. The names are the linker's: one letter stands for size_t.
#ifdef _WIN32
#define SIZE "y"
#else
#define SIZE "m"
#endif

void* SystemNew(size_t bytes) __asm__("__real__Znw" SIZE);
void* CountingNew(size_t bytes) __asm__("__wrap__Znw" SIZE);
void* CountingNew(size_t bytes) {
  void* memory = SystemNew(bytes);
  ++liveBlocks;
  return memory;
}

void SystemDelete(void* memory) noexcept __asm__("__real__ZdlPv");
void CountingDelete(void* memory) noexcept __asm__("__wrap__ZdlPv");
void CountingDelete(void* memory) noexcept {
  if (memory != nullptr) --liveBlocks;
  SystemDelete(memory);
}

// Not to the real one, which may call plain `delete` and so count twice.
void CountingSizedDelete(void* memory, size_t bytes) noexcept __asm__("__wrap__ZdlPv" SIZE);
void CountingSizedDelete(void* memory, size_t) noexcept {
  CountingDelete(memory);
}
