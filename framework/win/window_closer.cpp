// SPDX-License-Identifier: MIT
#include "framework/win/window_closer.h"

namespace {

HMODULE HoldThisModule() {
  HMODULE module = nullptr;
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCSTR>(&AfxDestroyOnItsThread), &module);
  return module;
}

// A posted message does not work: its handler still runs in the module after it has reported that
// the window is destroyed. A sent message is answered when the window's thread has left the module.
// So a separate thread sends it, and then releases the module in the one call that never returns.
[[noreturn]] DWORD WINAPI Closer(void* window) {
  ::SendMessageA(static_cast<HWND>(window), kMessageDestroy, 0, 0);
  HMODULE module = nullptr;
  ::GetModuleHandleExA(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<LPCSTR>(&AfxDestroyOnItsThread), &module);
  ::FreeLibraryAndExitThread(module, 0);
}

}  // namespace

void AfxDestroyOnItsThread(HWND window) {
  HoldThisModule();
  const HANDLE thread = ::CreateThread(nullptr, 0, &Closer, window, 0, nullptr);
  if (thread != nullptr) {
    ::CloseHandle(thread);
    return;
  }
  // The system cannot create a thread: the module then stays loaded.
  ::PostMessageA(window, kMessageDestroy, 0, 0);
}
