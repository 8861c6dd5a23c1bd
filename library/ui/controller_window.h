// SPDX-License-Identifier: MIT
// CControllerWindow: the engine's hold on the hand controller. The window lives on the thread that
// opened it and may be in the middle of a message when the engine ends; so the two share the dialog
// object, and whoever needs it longer deletes it.
// The engine may destroy this on any thread, with its lock held: nothing here waits for another
// thread, but see library/engine/controller_window.h about an owner's.
#pragma once

#include "library/engine/controller_window.h"

class CDlgController;

class CControllerWindow final : public IControllerWindow {
 public:
  /// Opens the window on the calling thread. As ControllerWindowFactory.
  static IControllerWindow* Open(CTelescope& engine, const CString& vendor, const CString& name,
                                 HWND owner);

  /// From now on the dialog calls the engine no more. Its window goes at once when this is its
  /// thread, else as soon as that thread handles messages.
  ~CControllerWindow() override;

 private:
  explicit CControllerWindow(CDlgController& openDialog) : dialog(openDialog) {}

  CDlgController& dialog;
};
