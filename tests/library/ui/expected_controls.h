// SPDX-License-Identifier: MIT
// What a dialog's template says, checked on the open dialog.
#pragma once

#include <vector>

#include "framework/win/windows_base.h"

namespace ui_test {

/// A control in dialog units.
struct Expected {
  int id;
  const wchar_t* text;
  int x, y, width, height;  ///< a width of 0: the control has taken a size of its own
  DWORD style;              ///< without WS_CHILD, WS_VISIBLE and what the state changes
};

/// Checks all of a dialog's controls, in the template's order.
void ExpectControls(HWND dialog, const std::vector<Expected>& expected);

/// Checks the dialog's font, which has 9 points.
void ExpectFont(HWND dialog, const wchar_t* face, LONG weight);

}  // namespace ui_test
