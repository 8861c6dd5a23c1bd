// SPDX-License-Identifier: MIT
// The entry point that the system calls at load and unload, around the static objects.
#include <windows.h>

#include "api/module_frame.h"

extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID reserved) {
  switch (reason) {
    case DLL_PROCESS_ATTACH:
      return ModuleAttached() ? TRUE : FALSE;
    case DLL_PROCESS_DETACH:
      ModuleDetaching(reserved != nullptr);
      return TRUE;
    default:
      return TRUE;
  }
}
