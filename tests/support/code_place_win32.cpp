// SPDX-License-Identifier: MIT
#include "tests/support/code_place_win32.h"

#include <cstdio>
#include <cstring>

std::array<char, 2 * MAX_PATH> CodePlace(DWORD64 address) {
  HMODULE module = nullptr;
  char path[MAX_PATH] = "?";
  // For address 0 the question below would be answered with the program.
  if (address != 0 && GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                                         reinterpret_cast<LPCSTR>(address), &module)) {
    GetModuleFileNameA(module, path, sizeof path - 1);
  }
  const char* slash = std::strrchr(path, '\\');
  std::array<char, 2 * MAX_PATH> place = {};
  std::snprintf(place.data(), place.size(), "%s+0x%llx", slash ? slash + 1 : path,
                static_cast<unsigned long long>(address - reinterpret_cast<DWORD64>(module)));
  return place;
}
