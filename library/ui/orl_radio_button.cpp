// SPDX-License-Identifier: MIT
#include "library/ui/orl_radio_button.h"

#include "library/ui/control_drawing.h"
#include "res/resource_ids.h"

namespace {

constexpr LONG kBoxSize = 13;  // pixels
constexpr LONG kTextGap = 4;   // pixels between box and text

}  // namespace

// The first three make the system draw at once, without a paint message; this paints over it.
BEGIN_MESSAGE_MAP(COrlRadioButton, CButton)
ON_MESSAGE(BM_SETCHECK, OnStateChange)
ON_MESSAGE(BM_SETSTATE, OnStateChange)
ON_MESSAGE(WM_SETTEXT, OnStateChange)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_ENABLE()
ON_WM_SETFOCUS()
ON_WM_KILLFOCUS()
END_MESSAGE_MAP()

COrlRadioButton::COrlRadioButton() {
  boxes.LoadBitmap(IDB_RADIO_BOXES);
}

void COrlRadioButton::OnPaint() {
  if (systemLook) {
    Default();
    return;
  }
  CPaintDC dc(m_hWnd);
  const CRect client = GetClientRect();
  if (!PaintContinuedGround(dc, m_hWnd)) PaintPlain(dc, client);
  CopyCell(dc, {client.left, (client.Height() - kBoxSize) / 2}, boxes, BoxCell());
  CRect textRect = client;
  textRect.left += kBoxSize + kTextGap;
  const CSelectedObject font(dc, ParentFont(m_hWnd));
  PaintControlText(dc, GetWindowText(), textRect, DT_SINGLELINE | DT_VCENTER, IsWindowEnabled());
}

// Columns: unchecked, checked. Rows: at rest, in use, disabled.
CRect COrlRadioButton::BoxCell() const {
  const UINT state = GetState();
  const LONG column = GetCheck() == BST_CHECKED ? 1 : 0;
  LONG row = (state & (BST_PUSHED | BST_FOCUS)) ? 1 : 0;
  if (!IsWindowEnabled()) row = 2;
  const CPoint corner(column * kBoxSize, row * kBoxSize);
  return {corner.x, corner.y, corner.x + kBoxSize, corner.y + kBoxSize};
}

BOOL COrlRadioButton::OnEraseBkgnd(HDC handle) {
  if (systemLook) return static_cast<BOOL>(Default());
  CDC dc(handle);
  PaintPlain(dc, GetClientRect());
  return TRUE;
}

void COrlRadioButton::OnEnable(bool) {
  Default();
  Invalidate();
}

void COrlRadioButton::OnSetFocus(HWND) {
  Default();
  Invalidate();
}

void COrlRadioButton::OnKillFocus(HWND) {
  Default();
  Invalidate();
}

LRESULT COrlRadioButton::OnStateChange(WPARAM, LPARAM) {
  const LRESULT result = Default();
  Invalidate();
  return result;
}
