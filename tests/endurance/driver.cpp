// SPDX-License-Identifier: MIT
#include "tests/endurance/driver.h"

#include <windows.h>

#include <stdexcept>

Driver::Driver() = default;

void* Driver::FindExport(const char* name) {
  if (module_ == nullptr) module_ = LoadLibraryW(L"velquin.dll");
  if (module_ == nullptr) throw std::runtime_error("velquin.dll does not load");
  const FARPROC found = GetProcAddress(static_cast<HMODULE>(module_), name);
  if (found == nullptr) throw std::runtime_error(std::string("velquin.dll has no ") + name);
  return reinterpret_cast<void*>(found);
}

void Driver::Unload() {
  if (module_ != nullptr) FreeLibrary(static_cast<HMODULE>(module_));
  module_ = nullptr;
}

bool Driver::IsLoaded() {
  return GetModuleHandleW(L"velquin.dll") != nullptr;
}

std::wstring Driver::Path() const {
  wchar_t path[MAX_PATH] = {};
  GetModuleFileNameW(static_cast<HMODULE>(module_), path, MAX_PATH);
  return path;
}
