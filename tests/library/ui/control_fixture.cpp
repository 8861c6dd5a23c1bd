// SPDX-License-Identifier: MIT
#include "tests/library/ui/control_fixture.h"

#include <stdexcept>

#include "framework/win/instance.h"
#include "tests/support/window_messages.h"

namespace {

constexpr char kClassName[] = "VelquinTestParent";

HWND MakeWindow() {
  WNDCLASSA description = {};
  description.lpfnWndProc = &::DefWindowProcA;
  description.hInstance = AfxGetResourceHandle();
  description.lpszClassName = kClassName;
  ::RegisterClassA(&description);
  return ::CreateWindowExA(0, kClassName, "", WS_POPUP | WS_VISIBLE, 40, 40, 400, 300, nullptr,
                           nullptr, AfxGetResourceHandle(), nullptr);
}

}  // namespace

BEGIN_MESSAGE_MAP(ParentWindow, CWnd)
ON_WM_ERASEBKGND()
ON_MESSAGE(WM_GETFONT, OnGetFont)
END_MESSAGE_MAP()

ParentWindow::ParentWindow() {
  LOGFONTA description = {};
  ::lstrcpyA(description.lfFaceName, "MS UI Gothic");
  description.lfHeight = -12;
  description.lfQuality = NONANTIALIASED_QUALITY;
  font.CreateFontIndirect(description);
  if (!SubclassWindow(MakeWindow())) throw std::runtime_error("no window for the test");
}

ParentWindow::~ParentWindow() {
  DestroyWindow();
}

BOOL ParentWindow::OnCommand(WPARAM wParam, LPARAM lParam) {
  commands.push_back({LOWORD(wParam), HIWORD(wParam), reinterpret_cast<HWND>(lParam)});
  return TRUE;
}

BOOL ParentWindow::OnEraseBkgnd(HDC handle) {
  CDC dc(handle);
  const CRect client = GetClientRect();
  for (int y = 0; y < client.bottom; ++y) {
    dc.FillSolidRect(CRect(0, y, client.right, y + 1), ground(y).value);
  }
  return TRUE;
}

LRESULT ParentWindow::OnGetFont(WPARAM, LPARAM) {
  return reinterpret_cast<LRESULT>(font.GetSafeHandle());
}

ControlFixture::ControlFixture() {
  INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES | ICC_UPDOWN_CLASS};
  ::InitCommonControlsEx(&classes);
  CreateSharedBrushes();
}

HWND ControlFixture::Add(const char* className, const char* text, DWORD style, const CRect& place,
                         UINT id) const {
  const HWND control = ::CreateWindowExA(
      0, className, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top, place.Width(),
      place.Height(), parent.m_hWnd, reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)),
      AfxGetResourceHandle(), nullptr);
  if (control == nullptr) throw std::runtime_error("no control for the test");
  ::SendMessageA(control, WM_SETFONT, ::SendMessageA(parent.m_hWnd, WM_GETFONT, 0, 0), FALSE);
  return control;
}

void ControlFixture::Pump() {
  HandleMessages();
}

void ControlFixture::Press(HWND control, CPoint point) {
  ::SendMessageA(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

void ControlFixture::MoveTo(HWND control, CPoint point) {
  ::SendMessageA(control, WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(point.x, point.y));
}

void ControlFixture::Release(HWND control, CPoint point) {
  ::SendMessageA(control, WM_LBUTTONUP, 0, MAKELPARAM(point.x, point.y));
}
