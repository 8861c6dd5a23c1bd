// SPDX-License-Identifier: MIT
// The entry point that the system calls at load and unload, around the static objects.
#include <windows.h>

#include "library/api/module_frame.h"

// From the compiler's runtime library, which declares it in no header: frees the memory that it
// reserves for exceptions thrown without memory. This library holds a copy of it, 73 KiB at every
// load.
namespace __gnu_cxx {
void __freeres() noexcept;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      return ModuleAttached() ? TRUE : FALSE;
    case DLL_PROCESS_DETACH:
      ModuleDetaching(reserved != nullptr);
      if (reserved == nullptr) __gnu_cxx::__freeres();
      return TRUE;
    default:
      return TRUE;
  }
}
