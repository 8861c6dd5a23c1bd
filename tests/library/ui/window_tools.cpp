// SPDX-License-Identifier: MIT
#include "tests/library/ui/window_tools.h"

#include <algorithm>

#include "tests/support/eventually.h"

namespace ui_test {
namespace {

constexpr auto kPatience = std::chrono::seconds(10);

bool IsOwnDialog(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  char name[16] = {};
  GetClassNameA(window, name, sizeof name);
  return process == GetCurrentProcessId() && std::string(name) == "#32770";
}

BOOL CALLBACK AppendDialog(HWND window, LPARAM result) {
  if (IsOwnDialog(window)) reinterpret_cast<std::vector<HWND>*>(result)->push_back(window);
  return TRUE;
}

}  // namespace

std::vector<HWND> OpenDialogs() {
  std::vector<HWND> dialogs;
  EnumWindows(&AppendDialog, reinterpret_cast<LPARAM>(&dialogs));
  return dialogs;
}

HWND FindDialogWith(int controlId, const std::vector<HWND>& others) {
  for (HWND dialog : OpenDialogs()) {
    const bool meant = std::find(others.begin(), others.end(), dialog) == others.end();
    if (meant && GetDlgItem(dialog, controlId) != nullptr) return dialog;
  }
  return nullptr;
}

HWND WaitForDialogWith(int controlId, const std::vector<HWND>& others) {
  HWND found = nullptr;
  Eventually(
      [&] {
        found = FindDialogWith(controlId, others);
        return found != nullptr && IsWindowVisible(found) &&
               GetUpdateRect(found, nullptr, FALSE) == FALSE;
      },
      kPatience);
  if (found == nullptr || !IsWindowVisible(found)) return nullptr;
  // Its thread answers only when it has left the opening of the window behind.
  SendMessageW(found, WM_NULL, 0, 0);
  return found;
}

bool WaitUntilGone(HWND window) {
  return Eventually([&] { return !IsWindow(window); }, kPatience);
}

bool WaitUntilHidden(HWND window) {
  return Eventually([&] { return !IsWindowVisible(window); }, kPatience);
}

std::wstring TextOf(HWND window) {
  std::wstring text(2048, L'\0');
  text.resize(static_cast<size_t>(
      SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::wstring TextOf(HWND dialog, int controlId) {
  return TextOf(GetDlgItem(dialog, controlId));
}

DWORD StyleOf(HWND dialog, int controlId) {
  return static_cast<DWORD>(GetWindowLongW(GetDlgItem(dialog, controlId), GWL_STYLE));
}

bool IsEnabled(HWND dialog, int controlId) {
  return IsWindowEnabled(GetDlgItem(dialog, controlId)) != FALSE;
}

RECT FromDialogUnits(HWND dialog, int x, int y, int width, int height) {
  // The system converts the place and the size each by itself.
  RECT rect = {x, y, width, height};
  MapDialogRect(dialog, &rect);
  return {rect.left, rect.top, rect.left + rect.right, rect.top + rect.bottom};
}

RECT PlaceOf(HWND child) {
  RECT rect = {};
  GetWindowRect(child, &rect);
  MapWindowPoints(nullptr, GetParent(child), reinterpret_cast<POINT*>(&rect), 2);
  return rect;
}

RECT PlaceOf(HWND dialog, int controlId) {
  return PlaceOf(GetDlgItem(dialog, controlId));
}

RECT ClientOf(HWND window) {
  RECT rect = {};
  GetClientRect(window, &rect);
  return rect;
}

RECT FrameOf(HWND window) {
  RECT rect = {};
  GetWindowRect(window, &rect);
  OffsetRect(&rect, -rect.left, -rect.top);
  return rect;
}

int DotsPerInch() {
  HDC screen = GetDC(nullptr);
  const int dotsPerInch = GetDeviceCaps(screen, LOGPIXELSY);
  ReleaseDC(nullptr, screen);
  return dotsPerInch;
}

COLORREF PixelOf(HWND window, int x, int y) {
  HDC dc = GetWindowDC(window);
  const COLORREF colour = GetPixel(dc, x, y);
  ReleaseDC(window, dc);
  return colour;
}

void Click(HWND dialog, int controlId) {
  HWND control = GetDlgItem(dialog, controlId);
  SendMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
  SendMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
}

void PressKey(HWND window, int key) {
  PostMessageW(window, WM_KEYDOWN, static_cast<WPARAM>(key), 1);
  PostMessageW(window, WM_KEYUP, static_cast<WPARAM>(key), static_cast<LPARAM>(0xC0000001));
}

}  // namespace ui_test
