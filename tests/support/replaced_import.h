// SPDX-License-Identifier: MIT
// Has a loaded library call a stand-in in place of one of the system's functions.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

/// @return the slot through which a module calls a system function; null when it never does.
inline void** ImportSlot(HMODULE module, const std::string& function) {
  if (module == nullptr) return nullptr;
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

/// @param standIn a function of the same signature
/// @return false when the module does not import the function.
inline bool ReplaceImport(HMODULE module, const std::string& function, void* standIn) {
  void** slot = ImportSlot(module, function);
  DWORD protection = 0;
  if (slot == nullptr || !VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection))
    return false;
  *slot = standIn;
  return VirtualProtect(slot, sizeof *slot, protection, &protection) != FALSE;
}

/// A stand-in for as long as the object lives. The module must stay loaded meanwhile, and no
/// thread may be on its way through the slot when the object goes.
class ReplacedImport {
 public:
  /// In velquin.dll.
  ReplacedImport(const char* function, void* standIn)
      : ReplacedImport(GetModuleHandleW(L"velquin.dll"), function, standIn) {}
  /// Throws std::runtime_error when the module is null or does not import the function.
  ReplacedImport(HMODULE module, const char* function, void* standIn)
      : slot_(ImportSlot(module, function)) {
    if (slot_ == nullptr) throw std::runtime_error(std::string("no import of ") + function);
    original_ = *slot_;
    Write(standIn);
  }
  ~ReplacedImport() { Write(original_); }
  ReplacedImport(const ReplacedImport&) = delete;
  ReplacedImport& operator=(const ReplacedImport&) = delete;

  /// The system's function.
  void* Original() const { return original_; }

 private:
  void Write(void* function) {
    DWORD protection = 0;
    VirtualProtect(slot_, sizeof *slot_, PAGE_READWRITE, &protection);
    *slot_ = function;
    VirtualProtect(slot_, sizeof *slot_, protection, &protection);
  }

  void** slot_;
  void* original_ = nullptr;
};
