// SPDX-License-Identifier: MIT
#include "library/ui/control_drawing.h"

#include "library/ui/colours.h"
#include "library/ui/orl_dialog_base.h"

HFONT ParentFont(HWND control) {
  return reinterpret_cast<HFONT>(::SendMessageA(::GetParent(control), WM_GETFONT, 0, 0));
}

void PaintControlText(CDC& dc, const CString& text, const CRect& rect, UINT format, bool enabled) {
  dc.SetBkMode(TRANSPARENT);
  CRect place = rect;
  if (!enabled) {
    place.OffsetRect(1, 1);
    dc.SetTextColor(kColourEngravedShadow);
    dc.DrawText(text, place, format);
    place = rect;
  }
  dc.SetTextColor(enabled ? kColourText : kColourDisabledText);
  dc.DrawText(text, place, format);
}

bool PaintContinuedGround(CDC& dc, HWND control) {
  const HWND parent = ::GetParent(control);
  CRect place;
  ::GetClientRect(control, &place);
  CRect ground = place;
  ::MapWindowPoints(control, parent, reinterpret_cast<POINT*>(&place), 2);
  const CClientDC beside(parent);
  const COLORREF top = beside.GetPixel(place.left - 1, place.top);
  const COLORREF bottom = beside.GetPixel(place.left - 1, place.bottom - 1);
  if (top == CLR_INVALID || bottom == CLR_INVALID) return false;
  // A gradient paints one line more than its extent; that line is the control's last row.
  --ground.bottom;
  COrlDialogBase::PaintGradient(dc, ground, bottom, top,
                                COrlDialogBase::GradientDirection::kVertical);
  return true;
}

void CopyCell(CDC& dc, CPoint to, const CBitmap& bitmap, const CRect& cell) {
  CMemoryDC images(dc);
  const CSelectedObject selected(images, bitmap.GetSafeHandle());
  dc.BitBlt(to.x, to.y, cell.Width(), cell.Height(), images, cell.left, cell.top);
}
