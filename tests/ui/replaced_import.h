// SPDX-License-Identifier: MIT
// Has a loaded library call a stand-in in place of one of the system's functions.
#pragma once

#include <windows.h>

#include <string>

namespace ui_test {

/// @return the slot through which a module calls a system function; null when it never does.
inline void** ImportSlot(HMODULE module, const std::string& function) {
  auto* base = reinterpret_cast<char*>(module);
  const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(
      base + reinterpret_cast<IMAGE_DOS_HEADER*>(base)->e_lfanew);
  const DWORD table =
      headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress;
  for (auto* at = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + table); at->Name != 0; ++at) {
    const auto* names = reinterpret_cast<IMAGE_THUNK_DATA*>(base + at->OriginalFirstThunk);
    auto** slots = reinterpret_cast<void**>(base + at->FirstThunk);
    for (size_t i = 0; names[i].u1.AddressOfData != 0; ++i) {
      if (names[i].u1.Ordinal & IMAGE_ORDINAL_FLAG) continue;
      const auto* byName =
          reinterpret_cast<IMAGE_IMPORT_BY_NAME*>(base + names[i].u1.AddressOfData);
      if (function == reinterpret_cast<const char*>(byName->Name)) return slots + i;
    }
  }
  return nullptr;
}

/// @return false when the module does not import the function.
inline bool ReplaceImport(HMODULE module, const std::string& function, void* standIn) {
  void** slot = ImportSlot(module, function);
  DWORD protection = 0;
  if (slot == nullptr || !VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection))
    return false;
  *slot = standIn;
  return VirtualProtect(slot, sizeof *slot, protection, &protection) != FALSE;
}

}  // namespace ui_test
