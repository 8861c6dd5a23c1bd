// SPDX-License-Identifier: MIT
// The engine's interface to the hand-controller window. The engine does not know any dialog:
// library/ui/ implements this interface, and library/api/ sets the factory.
#pragma once

#include "framework/base/cstring.h"
#include "framework/base/types.h"

class CTelescope;

/// A window that is open as long as the object lives. Owned by the engine. Created on the thread
/// that runs its messages. Any thread may destroy it, also with the engine's lock held; a thread
/// other than the window's does not wait. On the window's thread the window closes at once, and the
/// system may send a message to the window that becomes active instead. If that is the owner window
/// on another thread, the destructor waits until that thread handles the message.
class IControllerWindow {
 public:
  virtual ~IControllerWindow() = default;
};

/// Opens the window. @param engine outlives the window @param owner the host's window; may be null
/// @return the window, owned by the caller; null if it cannot be opened.
using ControllerWindowFactory = IControllerWindow* (*)(CTelescope& engine, const CString& vendor,
                                                       const CString& name, HWND owner);
