// SPDX-License-Identifier: MIT
// Having a window destroyed that belongs to another thread. Only that thread can do it.
#pragma once

#include "framework/win/windows_base.h"

/// Sent to a window of the library: destroy yourself.
inline constexpr UINT kMessageDestroy = WM_APP + 0x2F01;

/// Asks the window's thread to destroy it, and does not wait: that thread may be busy for long, or
/// be waiting for a lock of the caller. The module stays loaded until it is done. Any thread.
/// @param window of the library; one that is gone already does no harm
void AfxDestroyOnItsThread(HWND window);
