// SPDX-License-Identifier: MIT
#include "tests/library/ui/gdi_objects.h"

#include <windows.h>

#include <cstdint>

namespace {

constexpr int kTableOffset = 0xF8;  // in the process environment block of a 64-bit process
constexpr int kEntries = 65536;

struct Entry {
  uint64_t object;
  uint32_t owner;
  uint16_t unique;
  uint8_t type;  // 0 when the entry is free
  uint8_t flags;
  uint64_t user;
};
static_assert(sizeof(Entry) == 24);

const char* ProcessBlock() {
  using Function = const char*(WINAPI*)();
  const auto function = reinterpret_cast<Function>(reinterpret_cast<void*>(
      ::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "RtlGetCurrentPeb")));
  return function();
}

}  // namespace

int CountGdiObjects() {
  const auto* table = *reinterpret_cast<const Entry* const*>(ProcessBlock() + kTableOffset);
  int count = 0;
  for (int i = 0; i < kEntries; ++i) count += table[i].type != 0 ? 1 : 0;
  return count;
}
