// SPDX-License-Identifier: MIT
// CModelessKeys: lets Esc reach the modeless dialogs of this thread. The host's message loop knows
// nothing of them, so a hook looks at the messages that it takes.
#pragma once

#include "framework/win/windows_base.h"

class CModelessKeys {
 public:
  /// From now on Esc in the dialog or one of its controls cancels it. On the dialog's thread.
  static void Watch(HWND dialog);
  /// The dialog is going. Harmless for one that is not watched.
  static void Forget(HWND dialog);

 private:
  static LRESULT CALLBACK GetMessageHook(int code, WPARAM wParam, LPARAM lParam);
};
