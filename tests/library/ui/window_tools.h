// SPDX-License-Identifier: MIT
// Looking at the windows of this process and working them as a user does: by messages. Any thread;
// the window's own thread must be handling messages.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "framework/win/windows_base.h"

namespace ui_test {

/// @return the open dialog, shown or hidden, that has a control with this number; null when there
/// is none.
/// @param others dialogs that are not meant
HWND FindDialogWith(int controlId, const std::vector<HWND>& others = {});
/// The same, waited for: shown, and past its first painting. Null when it does not come in time.
HWND WaitForDialogWith(int controlId, const std::vector<HWND>& others = {});
/// @return whether the window is destroyed within some seconds.
bool WaitUntilGone(HWND window);
/// @return whether the window is hidden within some seconds.
bool WaitUntilHidden(HWND window);
/// @return the dialogs of this process, shown or hidden.
std::vector<HWND> OpenDialogs();

std::wstring TextOf(HWND window);
std::wstring TextOf(HWND dialog, int controlId);
DWORD StyleOf(HWND dialog, int controlId);
bool IsEnabled(HWND dialog, int controlId);

/// @return a rectangle of dialog units, given as x, y, width and height, in pixels.
RECT FromDialogUnits(HWND dialog, int x, int y, int width, int height);
/// @return where a child window lies in its dialog's client area.
RECT PlaceOf(HWND child);
RECT PlaceOf(HWND dialog, int controlId);
RECT ClientOf(HWND window);
/// @return the window's size, its corner being (0, 0).
RECT FrameOf(HWND window);

/// @return the dots per inch that this program sees; 96 unless a killed run of english_fit_test.cpp
/// has left others behind.
int DotsPerInch();

/// @return the colour shown at a place of the window, frame included.
COLORREF PixelOf(HWND window, int x, int y);

/// Presses and releases a button; returns when its command has been handled.
void Click(HWND dialog, int controlId);
/// Presses a key in a window as the system does: through the thread's message queue.
void PressKey(HWND window, int key);

}  // namespace ui_test

inline bool operator==(const RECT& a, const RECT& b) {
  return EqualRect(&a, &b) != FALSE;
}
inline void PrintTo(const RECT& rect, std::ostream* out) {
  *out << '(' << rect.left << ',' << rect.top << ' ' << rect.right - rect.left << 'x'
       << rect.bottom - rect.top << ')';
}
