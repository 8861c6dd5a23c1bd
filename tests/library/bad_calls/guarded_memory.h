// SPDX-License-Identifier: MIT
// Memory between two pages that nobody may touch: a byte read or written behind it stops the
// program, a byte written before it is seen.
#pragma once

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <stdexcept>

class GuardedMemory {
 public:
  /// @param size bytes, up to a page
  explicit GuardedMemory(size_t size) : size_(size) {
    constexpr DWORD kNow = MEM_RESERVE | MEM_COMMIT;
    pages_ = static_cast<char*>(VirtualAlloc(nullptr, 3 * kPage, kNow, PAGE_NOACCESS));
    DWORD before;
    if (pages_ == nullptr || size > kPage ||
        !VirtualProtect(pages_ + kPage, kPage, PAGE_READWRITE, &before)) {
      throw std::runtime_error("no memory to guard");
    }
    std::memset(pages_ + kPage, kFill, kPage);
  }
  ~GuardedMemory() { VirtualFree(pages_, 0, MEM_RELEASE); }
  GuardedMemory(const GuardedMemory&) = delete;
  GuardedMemory& operator=(const GuardedMemory&) = delete;

  /// @return the memory; it ends where the page that must not be touched begins.
  char* Get() const { return pages_ + 2 * kPage - size_; }
  template <typename Type>
  Type* As() const {
    return static_cast<Type*>(static_cast<void*>(Get()));
  }
  /// Whatever the memory is to hold; at most its size.
  const char* Fill(const void* bytes, size_t count) const {
    std::memcpy(Get(), bytes, std::min(count, size_));
    return Get();
  }
  /// @return whether nothing before the memory was written to.
  bool IsIntactBefore() const {
    return std::all_of(pages_ + kPage, Get(), [](char c) { return c == kFill; });
  }
  /// @return whether nothing was written to the memory itself from an offset on.
  bool IsUntouchedFrom(size_t offset) const {
    return std::all_of(Get() + offset, Get() + size_, [](char c) { return c == kFill; });
  }

  static constexpr char kFill = '\x5A';

 private:
  static constexpr size_t kPage = 4096;
  size_t size_;
  char* pages_;
};
