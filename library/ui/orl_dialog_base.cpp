// SPDX-License-Identifier: MIT
#include "library/ui/orl_dialog_base.h"

#include "library/ui/colours.h"
#include "library/ui/shared_brushes.h"

namespace {

constexpr COLORREF kNone = CLR_NONE;

struct BevelColours {
  COLORREF outerBottomRight;
  COLORREF innerBottomRight;
  COLORREF outerTopLeft;
  COLORREF innerTopLeft;
};

BevelColours ColoursOfBevel(int style) {
  switch (style) {
    case 2:
    case 3:
    case 6:
      return {kColourBlack, RGB(118, 118, 118), kColourBlack, RGB(64, 64, 64)};
    case 4:
      return {kColourBlack, kNone, kColourBlack, kNone};
    case 5:
      return {RGB(118, 118, 118), kNone, RGB(64, 64, 64), kNone};
    case 7:
    case 8:
      return {kColourBlack, RGB(118, 118, 118), kColourBlack, RGB(118, 118, 118)};
    case 9:
      return {kColourBlack, RGB(64, 64, 64), kColourBlack, RGB(118, 118, 118)};
    default:
      return {kColourBlack, RGB(84, 84, 84), RGB(222, 222, 222), RGB(207, 207, 207)};
  }
}

// A polyline of one colour. The system does not paint its last point, so that is set separately.
void PaintPolyline(CDC& dc, const POINT (&points)[3], COLORREF colour) {
  const CPen pen(PS_SOLID, 1, colour);
  const CSelectedObject selected(dc, pen.GetSafeHandle());
  dc.Polyline(points, 3);
  dc.SetPixel(points[2].x, points[2].y, colour);
}

void PaintRing(CDC& dc, const RECT& rect, COLORREF bottomRight, COLORREF topLeft) {
  const LONG right = rect.right - 1;
  const LONG bottom = rect.bottom - 1;
  PaintPolyline(dc, {{rect.left, bottom}, {right, bottom}, {right, rect.top}}, bottomRight);
  PaintPolyline(dc, {{rect.left, bottom}, {rect.left, rect.top}, {right, rect.top}}, topLeft);
}

// One channel of a gradient; the low eight bits count.
BYTE Channel(BYTE first, BYTE second, LONG extent, LONG i) {
  const double step = extent == 0 ? 0.0 : static_cast<double>(second - first) / extent;
  return static_cast<BYTE>(first + static_cast<int>(i * step));
}

COLORREF GradientColour(COLORREF first, COLORREF second, LONG extent, LONG i) {
  return RGB(Channel(GetRValue(first), GetRValue(second), extent, i),
             Channel(GetGValue(first), GetGValue(second), extent, i),
             Channel(GetBValue(first), GetBValue(second), extent, i));
}

// The message that the library cannot start appears before the brushes exist. At the end of a
// process a window may outlive them.
HBRUSH HandleOf(const CBrush* brush) {
  return brush == nullptr ? static_cast<HBRUSH>(::GetStockObject(BLACK_BRUSH)) : *brush;
}

}  // namespace

COrlDialogBase::COrlDialogBase()
    : darkBrush(GetSharedBrushes().dark), blackBrush(GetSharedBrushes().black) {}

HBRUSH COrlDialogBase::ControlColour(CDC& dc, HWND control, UINT kind) const {
  dc.SetTextColor(kColourText);
  if (kind == CTLCOLOR_MSGBOX) {
    dc.SetBkMode(TRANSPARENT);
    return HandleOf(blackBrush);
  }
  if (kind == CTLCOLOR_BTN) {
    dc.SetBkMode(TRANSPARENT);
    return static_cast<HBRUSH>(::GetStockObject(NULL_BRUSH));
  }
  if (kind == CTLCOLOR_EDIT && (::GetWindowLongA(control, GWL_STYLE) & 3) != 3) {
    dc.SetBkMode(OPAQUE);
    dc.SetBkColor(kColourBlack);
    return HandleOf(blackBrush);
  }
  dc.SetBkMode(kind == CTLCOLOR_DLG || kind == CTLCOLOR_SCROLLBAR ? TRANSPARENT : OPAQUE);
  dc.SetBkColor(kColourDark);
  return HandleOf(darkBrush);
}

void COrlDialogBase::PaintGradient(CDC& dc, const RECT& rect, COLORREF first, COLORREF second,
                                   GradientDirection direction) {
  const bool vertical = direction == GradientDirection::kVertical;
  const LONG extent = vertical ? rect.bottom - rect.top : rect.right - rect.left;
  for (LONG i = 0; i <= extent; ++i) {
    const CRect line = vertical ? CRect(rect.left, rect.bottom - i, rect.right, rect.bottom - i + 1)
                                : CRect(rect.left + i, rect.top, rect.left + i + 1, rect.bottom);
    dc.FillSolidRect(line, GradientColour(first, second, extent, i));
  }
}

void COrlDialogBase::PaintBevel(CDC& dc, const RECT& rect, int style) {
  const BevelColours colours = ColoursOfBevel(style);
  PaintRing(dc, rect, colours.outerBottomRight, colours.outerTopLeft);
  if (colours.innerBottomRight == kNone) return;
  CRect inner(rect);
  inner.DeflateRect(1, 1);
  PaintRing(dc, inner, colours.innerBottomRight, colours.innerTopLeft);
}

void COrlDialogBase::PaintPlain(CDC& dc, const RECT& rect) {
  dc.FillSolidRect(rect, kColourDark);
}
