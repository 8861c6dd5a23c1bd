// SPDX-License-Identifier: MIT
#include "tests/library/endurance/library_memory.h"

#include <malloc.h>

#include <atomic>
#include <cstdlib>

namespace {

std::atomic<int64_t> blocks = 0;
std::atomic<int64_t> bytes = 0;

void Count(void* block, int sign) {
  if (block == nullptr) return;
  blocks += sign;
  bytes += sign * static_cast<int64_t>(_msize(block));
}

void* CountedMalloc(size_t size) {
  void* block = std::malloc(size);
  Count(block, 1);
  return block;
}

void* CountedCalloc(size_t count, size_t size) {
  void* block = std::calloc(count, size);
  Count(block, 1);
  return block;
}

void* CountedRealloc(void* block, size_t size) {
  Count(block, -1);
  void* moved = std::realloc(block, size);
  Count(moved, 1);
  return moved;
}

void CountedFree(void* block) {
  Count(block, -1);
  std::free(block);
}

}  // namespace

LibraryMemory::LibraryMemory()
    : malloc_("malloc", reinterpret_cast<void*>(&CountedMalloc)),
      calloc_("calloc", reinterpret_cast<void*>(&CountedCalloc)),
      realloc_("realloc", reinterpret_cast<void*>(&CountedRealloc)),
      free_("free", reinterpret_cast<void*>(&CountedFree)) {
  blocks = 0;
  bytes = 0;
}

int64_t LibraryMemory::Blocks() {
  return blocks;
}

int64_t LibraryMemory::Bytes() {
  return bytes;
}
