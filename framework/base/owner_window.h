// SPDX-License-Identifier: MIT
// COwnerWindow: holds a window handle that somebody else owns. It stands in for the framework's
// window class where there are no windows: only attaching and detaching.
#pragma once

#include "framework/base/types.h"

class COwnerWindow {
 public:
  /// @param window kept, never destroyed; may be null.
  void Attach(HWND window) { m_hWnd = window; }
  /// @return the handle that was attached.
  HWND Detach() {
    HWND window = m_hWnd;
    m_hWnd = nullptr;
    return window;
  }

  HWND m_hWnd = nullptr;
};
