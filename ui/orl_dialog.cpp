// SPDX-License-Identifier: MIT
#include "ui/orl_dialog.h"

BEGIN_MESSAGE_MAP(COrlDialog, CDialog)
ON_WM_CTLCOLOR()
ON_WM_NCPAINT()
ON_WM_NCACTIVATE()
ON_WM_NCHITTEST()
ON_WM_NCMOUSEMOVE()
ON_MESSAGE(WM_NCMOUSELEAVE, OnNcMouseLeave)
ON_MESSAGE(WM_NCMOUSEHOVER, OnNcMouseHover)
ON_WM_NCLBUTTONDOWN()
ON_WM_NCLBUTTONUP()
END_MESSAGE_MAP()

COrlDialog::COrlDialog(UINT templateId, HWND parent)
    : CDialog(templateId, parent), ownTemplate(templateId), ownParent(parent) {}

BOOL COrlDialog::Create() {
  return CDialog::Create(ownTemplate, ownParent);
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

LRESULT COrlDialog::OnNcHitTest(CPoint screen) {
  const LRESULT hit = caption.HitTest(m_hWnd, screen);
  return hit == HTNOWHERE ? Default() : hit;
}

void COrlDialog::OnNcMouseMove(UINT hit, CPoint) {
  if (caption.PointerMoved(m_hWnd, hit)) {
    constexpr DWORD kHoverMs = 1;
    TRACKMOUSEEVENT track = {sizeof track, TME_NONCLIENT | TME_HOVER | TME_LEAVE, m_hWnd, kHoverMs};
    ::TrackMouseEvent(&track);
  }
  Default();
}

LRESULT COrlDialog::OnNcMouseLeave(WPARAM, LPARAM) {
  caption.PointerLeft(m_hWnd);
  return Default();
}

LRESULT COrlDialog::OnNcMouseHover(WPARAM wParam, LPARAM) {
  caption.PointerMoved(m_hWnd, static_cast<LRESULT>(wParam));
  return Default();
}

void COrlDialog::OnNcLButtonDown(UINT hit, CPoint) {
  if (!caption.ButtonPressed(m_hWnd, hit)) Default();
}

void COrlDialog::OnNcLButtonUp(UINT hit, CPoint) {
  if (!caption.ButtonReleased(m_hWnd, hit)) Default();
}
