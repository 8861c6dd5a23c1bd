// SPDX-License-Identifier: MIT
// The engine's view of the hand-controller window. The engine knows no dialog: library/ui/
// implements this, and library/api/ plugs the factory in.
#pragma once

#include "framework/base/cstring.h"
#include "framework/base/types.h"

class CTelescope;

/// A window that is open as long as the object lives. Owned by the engine. Made on the thread that
/// runs its messages; destroyed on any, perhaps with the engine's lock held. From another thread
/// that waits for nobody. On its own thread the window goes at once, and the system may send a
/// message to the window that becomes active instead; where that is the owner and has a thread of
/// its own, this waits until that thread handles it.
class IControllerWindow {
 public:
  virtual ~IControllerWindow() = default;
};

/// Opens the window. @param engine outlives the window @param owner the host's window; may be null
/// @return the window, owned by the caller; null when it cannot be opened.
using ControllerWindowFactory = IControllerWindow* (*)(CTelescope& engine, const CString& vendor,
                                                       const CString& name, HWND owner);
