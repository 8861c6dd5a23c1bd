// SPDX-License-Identifier: MIT
#include "platform/user_notice.h"

#include <windows.h>

namespace platform {
namespace {

HMODULE ThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      reinterpret_cast<const wchar_t*>(&ThisModule), &module);
  return module;
}

}  // namespace

int ShowMessageBox(const char* text, const char* title, uint32_t type) {
  return MessageBoxA(nullptr, text, title, type);
}

void* ShowBusyPointer() {
  return SetCursor(LoadCursorW(nullptr, MAKEINTRESOURCEW(32514)));
}

void RestorePointer(void* previous) {
  SetCursor(static_cast<HCURSOR>(previous));
}

int LoadStringResource(uint32_t id, char* buffer, size_t size) {
  return LoadStringA(ThisModule(), id, buffer, static_cast<int>(size));
}

}  // namespace platform
