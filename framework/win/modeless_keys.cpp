// SPDX-License-Identifier: MIT
#include "framework/win/modeless_keys.h"

#include "framework/win/module_calls.h"

namespace {

// The thread's hook is stored with its dialog.
constexpr char kHookProperty[] = "VelquinModelessHook";

// The watched dialog that a window is or belongs to; null if there is none.
HWND WatchedDialog(HWND window) {
  for (HWND at = window; at != nullptr; at = ::GetAncestor(at, GA_PARENT)) {
    if (::GetPropA(at, kHookProperty) != nullptr) return at;
  }
  return nullptr;
}

// Without a focus, for example after the focused button was disabled, keys arrive as system keys;
// bit 29 then shows whether Alt is down.
bool IsEscape(const MSG& message) {
  constexpr LPARAM kAltDown = 1 << 29;
  if (message.wParam != VK_ESCAPE) return false;
  return message.message == WM_KEYDOWN ||
         (message.message == WM_SYSKEYDOWN && (message.lParam & kAltDown) == 0);
}

}  // namespace

void CModelessKeys::Watch(HWND dialog) {
  HHOOK hook = ::SetWindowsHookExA(WH_GETMESSAGE, &GetMessageHook, nullptr, ::GetCurrentThreadId());
  if (hook != nullptr) ::SetPropA(dialog, kHookProperty, hook);
}

void CModelessKeys::Forget(HWND dialog) {
  auto hook = static_cast<HHOOK>(::RemovePropA(dialog, kHookProperty));
  if (hook != nullptr) ::UnhookWindowsHookEx(hook);
}

LRESULT CALLBACK CModelessKeys::GetMessageHook(int code, WPARAM wParam, LPARAM lParam) {
  const CModuleCall call;
  auto* message = reinterpret_cast<MSG*>(lParam);
  if (code >= 0 && wParam == PM_REMOVE && IsEscape(*message)) {
    if (HWND dialog = WatchedDialog(message->hwnd); dialog != nullptr) {
      ::PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
      message->message = WM_NULL;
    }
  }
  return ::CallNextHookEx(nullptr, code, wParam, lParam);
}
