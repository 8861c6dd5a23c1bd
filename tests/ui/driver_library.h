// SPDX-License-Identifier: MIT
// The built velquin.dll, loaded by name as a host does; released at destruction.
#pragma once

#include <windows.h>

#include <stdexcept>
#include <string>

#include "api/telescope_api.h"

class DriverLibrary {
 public:
  DriverLibrary() : module_(LoadLibraryW(L"velquin.dll")) {
    if (module_ == nullptr) throw std::runtime_error("velquin.dll does not load");
    Find("TelescopeStart", Start);
    Find("TelescopeEnd", End);
    Find("TelescopeDialog", Dialog);
    Find("TelescopeSetName", SetName);
    Find("TelescopeSetPos", SetPos);
    Find("TelescopeLook", Look);
    Find("TelescopeSetLogPath", SetLogPath);
    Find("TelescopeSetLogPrefix", SetLogPrefix);
    Find("TelescopeGetPos", GetPos);
  }
  ~DriverLibrary() { Unload(); }
  DriverLibrary(const DriverLibrary&) = delete;
  DriverLibrary& operator=(const DriverLibrary&) = delete;

  void Unload() {
    if (module_ != nullptr) FreeLibrary(module_);
    module_ = nullptr;
  }
  static bool IsLoaded() { return GetModuleHandleW(L"velquin.dll") != nullptr; }

  TelescopeStartFn Start = nullptr;
  TelescopeEndFn End = nullptr;
  TelescopeDialogFn Dialog = nullptr;
  TelescopeSetNameFn SetName = nullptr;
  TelescopeSetPosFn SetPos = nullptr;
  TelescopeLookFn Look = nullptr;
  TelescopeSetLogPathFn SetLogPath = nullptr;
  TelescopeSetLogPrefixFn SetLogPrefix = nullptr;
  TelescopeGetPosFn GetPos = nullptr;

 private:
  template <typename Function>
  void Find(const char* name, Function& function) {
    const FARPROC found = GetProcAddress(module_, name);
    if (found == nullptr) throw std::runtime_error(std::string("no export ") + name);
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(found));
  }

  HMODULE module_;
};
