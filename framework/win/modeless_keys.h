// SPDX-License-Identifier: MIT
// CModelessKeys: makes Esc work in the modeless dialogs of this thread. The host's message loop
// does not know these dialogs, so a hook checks the messages that it removes.
#pragma once

#include "framework/win/windows_base.h"

class CModelessKeys {
 public:
  /// From now on Esc in the dialog or one of its controls cancels it. Call on the dialog's thread.
  static void Watch(HWND dialog);
  /// The dialog is being destroyed. Does nothing for a dialog that is not watched.
  static void Forget(HWND dialog);

 private:
  static LRESULT CALLBACK GetMessageHook(int code, WPARAM wParam, LPARAM lParam);
};
