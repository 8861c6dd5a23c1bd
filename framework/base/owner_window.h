// SPDX-License-Identifier: MIT
// COwnerWindow: holds a window handle that it does not own. It replaces the framework's window
// class in code without windows: it can only attach and detach.
#pragma once

#include "framework/base/types.h"

class COwnerWindow {
 public:
  /// @param window stored, never destroyed; may be null.
  void Attach(HWND window) { m_hWnd = window; }
  /// @return the handle that was attached.
  HWND Detach() {
    HWND window = m_hWnd;
    m_hWnd = nullptr;
    return window;
  }

  HWND m_hWnd = nullptr;
};
