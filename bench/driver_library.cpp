// SPDX-License-Identifier: MIT
#include "bench/driver_library.h"

#include <windows.h>

#include <cstdio>

namespace {

template <typename Function>
bool Find(HMODULE library, const char* name, Function& function) {
  function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
  return function != nullptr;
}

}  // namespace

DriverLibrary::DriverLibrary() {
  HMODULE library = LoadLibraryW(L"velquin.dll");
  ready = library != nullptr && Find(library, "TelescopeStart", start) &&
          Find(library, "TelescopeEnd", end) && Find(library, "TelescopeGetPos", getPos) &&
          Find(library, "TelescopeSlewPulseDuration", pulse);
  if (!ready) std::puts("velquin.dll not found beside this program");
}
