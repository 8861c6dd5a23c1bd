// SPDX-License-Identifier: MIT
#include "tests/engine/live_blocks.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<int> liveBlocks = 0;

}  // namespace

int LiveBlocks() {
  return liveBlocks;
}

// The program's own: every plain `new` ends here.
void* operator new(size_t bytes) {
  void* memory = std::malloc(bytes == 0 ? 1 : bytes);
  if (memory == nullptr) throw std::bad_alloc();
  ++liveBlocks;
  return memory;
}

void operator delete(void* memory) noexcept {
  if (memory != nullptr) --liveBlocks;
  std::free(memory);
}

void operator delete(void* memory, size_t) noexcept {
  operator delete(memory);
}
