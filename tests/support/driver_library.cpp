// SPDX-License-Identifier: MIT
#include "tests/support/driver_library.h"

#include <stdexcept>
#include <string>

namespace {

constexpr const char* kName = "velquin.dll";

}  // namespace

DriverLibrary::DriverLibrary() : module(LoadLibraryA(kName)) {
  if (module == nullptr) throw std::runtime_error("velquin.dll cannot be loaded");
}

DriverLibrary::~DriverLibrary() {
  Unload();
}

void DriverLibrary::Unload() {
  if (module != nullptr) FreeLibrary(module);
  module = nullptr;
}

bool DriverLibrary::IsLoaded() {
  return GetModuleHandleA(kName) != nullptr;
}

FARPROC DriverLibrary::FindAny(const char* name) const {
  // A name with "@8" or an underscore would be another one.
  const FARPROC function = module == nullptr ? nullptr : GetProcAddress(module, name);
  if (function == nullptr) throw std::runtime_error(std::string("velquin.dll lacks ") + name);
  return function;
}
