// SPDX-License-Identifier: MIT
#include "library/ui/orl_dialog.h"

#include <algorithm>

#include "library/ui/frame_sizes.h"

BEGIN_MESSAGE_MAP(COrlDialog, CDialog)
ON_WM_CTLCOLOR()
ON_WM_NCPAINT()
ON_WM_NCACTIVATE()
ON_MESSAGE(WM_NCCALCSIZE, OnNcCalcSize)
ON_WM_NCHITTEST()
ON_WM_NCMOUSEMOVE()
ON_MESSAGE(WM_NCMOUSELEAVE, OnNcMouseLeave)
ON_MESSAGE(WM_NCMOUSEHOVER, OnNcMouseHover)
ON_WM_NCLBUTTONDOWN()
ON_WM_NCLBUTTONUP()
ON_MESSAGE(WM_NCLBUTTONDBLCLK, OnNcLButtonDblClk)
ON_WM_MOUSEMOVE()
ON_WM_LBUTTONUP()
ON_WM_CAPTURECHANGED()
END_MESSAGE_MAP()

COrlDialog::COrlDialog(UINT templateId, HWND parent)
    : CDialog(templateId, parent), ownTemplate(templateId), ownParent(parent) {}

BOOL COrlDialog::Create() {
  return CDialog::Create(ownTemplate, ownParent);
}

// The template gave the window the system's frame. It grows to the painted frame, around the same
// client area.
BOOL COrlDialog::OnInitDialog() {
  if (!systemLook) {
    const CRect wanted = GetClientRect();
    constexpr UINT kFrameOnly = SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED;
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, 0, 0, kFrameOnly | SWP_NOSIZE);
    const CRect left = GetClientRect();
    const CRect window = GetWindowRect();
    ::SetWindowPos(m_hWnd, nullptr, 0, 0, window.Width() + wanted.Width() - left.Width(),
                   window.Height() + wanted.Height() - left.Height(), kFrameOnly);
  }
  return CDialog::OnInitDialog();
}

void COrlDialog::DoDataExchange(CDataExchange*) {}

HBRUSH COrlDialog::OnCtlColor(CDC& dc, HWND control, UINT kind) {
  return systemLook ? CDialog::OnCtlColor(dc, control, kind) : ControlColour(dc, control, kind);
}

void COrlDialog::OnNcPaint() {
  caption.Paint(m_hWnd, ::GetActiveWindow() == m_hWnd);
}

BOOL COrlDialog::OnNcActivate(bool active) {
  const bool drawnActive = (active || (m_nFlags & WF_STAYACTIVE) != 0) && IsWindowEnabled();
  caption.Paint(m_hWnd, drawnActive);
  return TRUE;
}

// If the system's frame is narrower than the painted bands (tool windows, the classic look), the
// bands and the close box would lie half below the client area.
LRESULT COrlDialog::OnNcCalcSize(WPARAM, LPARAM lParam) {
  RECT& client = *reinterpret_cast<RECT*>(lParam);
  const RECT window = client;
  const LRESULT result = Default();
  if (systemLook || ::IsIconic(m_hWnd)) return result;
  const FrameSizes sizes;
  client.left = std::max(client.left, window.left + sizes.side);
  client.top = std::max(client.top, window.top + sizes.band);
  client.right = std::max(client.left, std::min(client.right, window.right - sizes.side));
  client.bottom = std::max(client.top, std::min(client.bottom, window.bottom - sizes.bottom));
  return result;
}

LRESULT COrlDialog::OnNcHitTest(CPoint screen) {
  const LRESULT button = caption.HitTest(m_hWnd, screen);
  if (button != HTNOWHERE) return button;
  const LRESULT hit = Default();
  // The system counts the part of the band outside its own frame as no part of the window.
  const CRect window = GetWindowRect();
  const CRect band(window.left, window.top, window.right, window.top + FrameSizes().band);
  // The painted buttons are not at the place of the system's buttons.
  const bool isSystemButton = hit == HTCLOSE || hit == HTMINBUTTON || hit == HTMAXBUTTON;
  const bool belongsToNone = hit == HTNOWHERE || hit == HTERROR || isSystemButton;
  return belongsToNone && band.PtInRect(screen) ? HTCAPTION : hit;
}

void COrlDialog::OnNcMouseMove(UINT hit, CPoint) {
  if (caption.PointerMoved(m_hWnd, hit)) {
    constexpr DWORD kHoverMs = 1;
    TRACKMOUSEEVENT track = {sizeof track, TME_NONCLIENT | TME_HOVER | TME_LEAVE, m_hWnd, kHoverMs};
    ::TrackMouseEvent(&track);
  }
  // Over its own buttons the system would draw them highlighted.
  if (!CPaintCaption::IsButton(hit)) Default();
}

LRESULT COrlDialog::OnNcMouseLeave(WPARAM, LPARAM) {
  caption.PointerLeft(m_hWnd);
  return Default();
}

LRESULT COrlDialog::OnNcMouseHover(WPARAM wParam, LPARAM) {
  const auto hit = static_cast<LRESULT>(wParam);
  caption.PointerMoved(m_hWnd, hit);
  return CPaintCaption::IsButton(hit) ? 0 : Default();
}

void COrlDialog::OnNcLButtonDown(UINT hit, CPoint) {
  if (!caption.ButtonPressed(m_hWnd, hit)) Default();
}

// A second press soon after the first is an ordinary press.
LRESULT COrlDialog::OnNcLButtonDblClk(WPARAM wParam, LPARAM) {
  return caption.ButtonPressed(m_hWnd, static_cast<LRESULT>(wParam)) ? 0 : Default();
}

void COrlDialog::OnNcLButtonUp(UINT hit, CPoint) {
  if (!caption.ButtonReleased(m_hWnd, hit)) Default();
}

LRESULT COrlDialog::CaptionHit(CPoint client) {
  ::ClientToScreen(m_hWnd, &client);
  return caption.HitTest(m_hWnd, client);
}

void COrlDialog::OnMouseMove(UINT, CPoint point) {
  if (caption.IsPressed()) {
    caption.PointerMoved(m_hWnd, CaptionHit(point));
  } else {
    Default();
  }
}

void COrlDialog::OnLButtonUp(UINT, CPoint point) {
  if (!caption.IsPressed() || !caption.ButtonReleased(m_hWnd, CaptionHit(point))) Default();
}

void COrlDialog::OnCaptureChanged(HWND) {
  caption.CancelPress(m_hWnd);
  Default();
}
