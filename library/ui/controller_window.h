// SPDX-License-Identifier: MIT
// CControllerWindow: the engine's handle of the hand controller. The window lives on the thread
// that opened it, and may be handling a message when the engine ends. So the engine and the window
// share the dialog object; the one that needs it longer deletes it.
// The engine may destroy this object on any thread, with its lock held. No function here waits for
// another thread, except as library/engine/controller_window.h says about an owner's thread.
#pragma once

#include "library/engine/controller_window.h"

class CDlgController;

class CControllerWindow final : public IControllerWindow {
 public:
  /// Opens the window on the calling thread; see ControllerWindowFactory.
  static IControllerWindow* Open(CTelescope& engine, const CString& vendor, const CString& name,
                                 HWND owner);

  /// From now on the dialog does not call the engine. On the window's thread the window closes at
  /// once; otherwise it closes as soon as that thread handles messages.
  ~CControllerWindow() override;

 private:
  explicit CControllerWindow(CDlgController& openDialog) : dialog(openDialog) {}

  CDlgController& dialog;
};
