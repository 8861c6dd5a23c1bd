// SPDX-License-Identifier: MIT
#include "library/ui/orl_group_box.h"

#include "library/ui/colours.h"
#include "library/ui/control_drawing.h"

namespace {

constexpr COLORREF kFrameLight = RGB(92, 92, 92);
constexpr int kTextIndent = 6;  // pixels

// Draws a closed frame one pixel wide along the inside of a rectangle.
void PaintFrame(CDC& dc, const CRect& rect, COLORREF colour) {
  const LONG right = rect.right - 1;
  const LONG bottom = rect.bottom - 1;
  const POINT corners[] = {{rect.left, rect.top},
                           {right, rect.top},
                           {right, bottom},
                           {rect.left, bottom},
                           {rect.left, rect.top}};
  const CPen pen(PS_SOLID, 1, colour);
  const CSelectedObject selected(dc, pen.GetSafeHandle());
  dc.Polyline(corners, 5);
}

}  // namespace

BEGIN_MESSAGE_MAP(COrlGroupBox, CButton)
ON_WM_PAINT()
ON_WM_ENABLE()
ON_MESSAGE(WM_SETTEXT, OnSetText)
END_MESSAGE_MAP()

void COrlGroupBox::OnPaint() {
  if (systemLook) {
    Default();
    return;
  }
  CPaintDC dc(m_hWnd);
  const CSelectedObject font(dc, ParentFont(m_hWnd));
  const CString text = GetWindowText();
  CRect textRect = PlaceText(dc, text);
  dc.SetBkMode(TRANSPARENT);
  dc.SetTextColor(IsWindowEnabled() ? kColourText : kColourDisabledText);
  dc.DrawText(text, textRect, DT_SINGLELINE);
  dc.ExcludeClipRect(textRect);

  CRect frame = GetClientRect();
  frame.top = textRect.Height() / 2;
  CRect light(frame.left + 1, frame.top + 1, frame.right, frame.bottom);
  CRect dark(frame.left, frame.top, frame.right - 1, frame.bottom - 1);
  PaintFrame(dc, light, kFrameLight);
  PaintFrame(dc, dark, kColourBlack);
}

CRect COrlGroupBox::PlaceText(CDC& dc, const CString& text) const {
  CRect rect;
  dc.DrawText(text.IsEmpty() ? CString(" ") : text, rect, DT_SINGLELINE | DT_CALCRECT);
  const bool centred = (GetStyle() & BS_CENTER) != 0;  // right-aligned has one of the two bits
  rect.OffsetRect(centred ? (GetClientRect().Width() - rect.Width()) / 2 : kTextIndent, 0);
  return rect;
}

void COrlGroupBox::OnEnable(bool) {
  Default();
  RepaintWithGround();
}

LRESULT COrlGroupBox::OnSetText(WPARAM, LPARAM) {
  const LRESULT result = Default();
  RepaintWithGround();
  return result;
}

// The box has no background: only the dialog can erase its previous text.
void COrlGroupBox::RepaintWithGround() const {
  CRect place = GetWindowRect();
  ::MapWindowPoints(nullptr, GetParent(), reinterpret_cast<POINT*>(&place), 2);
  ::RedrawWindow(GetParent(), &place, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}
