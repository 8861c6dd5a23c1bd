// SPDX-License-Identifier: MIT
// Destroys a window that belongs to another thread. Only that thread can do it.
#pragma once

#include "framework/win/windows_base.h"

/// Sent to a window of the library to make it destroy itself.
inline constexpr UINT kMessageDestroy = WM_APP + 0x2F01;

/// Asks the window's thread to destroy it. Does not wait: that thread may be busy for long, or wait
/// for a lock of the caller. The module stays loaded until the window is destroyed. Any thread.
/// @param window of the library; one that is already destroyed does no harm
void AfxDestroyOnItsThread(HWND window);
