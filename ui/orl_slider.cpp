// SPDX-License-Identifier: MIT
#include "ui/orl_slider.h"

#include "ui/colours.h"

namespace {

constexpr COLORREF kSelection = RGB(51, 153, 255);
constexpr COLORREF kThumbPressed = RGB(36, 36, 36);
constexpr int kEndTickLength = 6;    // pixels
constexpr int kInnerTickLength = 3;  // pixels
constexpr int kTickGap = 2;          // pixels between the thumb and the ticks

// A vertical slider is a horizontal one with the axes exchanged.
CRect Mirrored(const CRect& rect) {
  return {rect.top, rect.left, rect.bottom, rect.right};
}

}  // namespace

BEGIN_MESSAGE_MAP(COrlSlider, CSliderCtrl)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
END_MESSAGE_MAP()

void COrlSlider::OnPaint() {
  if (systemLook) {
    Default();
    return;
  }
  CPaintDC paint(m_hWnd);
  const CRect client = GetClientRect();
  // Put together in memory first, so that a moving thumb does not flicker.
  CMemoryDC dc(paint);
  CBitmap picture;
  picture.Attach(::CreateCompatibleBitmap(paint.GetSafeHdc(), client.Width(), client.Height()));
  const CSelectedObject selected(dc, picture.GetSafeHandle());
  PaintSlider(dc);
  paint.BitBlt(0, 0, client.Width(), client.Height(), dc, 0, 0);
}

void COrlSlider::PaintSlider(CDC& dc) {
  const bool vertical = (GetStyle() & TBS_VERT) != 0;
  PaintPlain(dc, GetClientRect());
  PaintChannel(dc, vertical);
  if (!(GetStyle() & TBS_NOTICKS)) PaintTicks(dc, vertical);
  PaintThumb(dc);
  if (focusRectangle && ::GetFocus() == m_hWnd) dc.DrawFocusRect(GetClientRect());
}

void COrlSlider::PaintChannel(CDC& dc, bool vertical) {
  // The system tells the channel of a vertical slider with its axes exchanged.
  const CRect told = GetChannelRect();
  const CRect channel = vertical ? Mirrored(told) : told;
  PaintBevel(dc, channel, (GetStyle() & TBS_BOTH) ? 9 : 5);
  if (!(GetStyle() & TBS_ENABLESELRANGE)) return;
  const int range = GetRangeMax() - GetRangeMin();
  if (range <= 0 || GetSelEnd() <= GetSelStart()) return;
  const auto place = [&](int position) {
    return told.left + told.Width() * (position - GetRangeMin()) / range;
  };
  CRect selection(place(GetSelStart()), told.top, place(GetSelEnd()), told.bottom);
  selection.DeflateRect(1, 1);
  dc.FillSolidRect(vertical ? Mirrored(selection) : selection, kSelection);
}

void COrlSlider::PaintTicks(CDC& dc, bool vertical) {
  const CRect thumb = vertical ? Mirrored(GetThumbRect()) : GetThumbRect();
  const DWORD style = GetStyle();
  if (style & (TBS_TOP | TBS_BOTH)) PaintTickRow(dc, vertical, thumb.top - kTickGap, -1);
  if (!(style & TBS_TOP)) PaintTickRow(dc, vertical, thumb.bottom + kTickGap, 1);
}

// One row of ticks that begin at `edge` and grow upward (-1) or downward (1).
void COrlSlider::PaintTickRow(CDC& dc, bool vertical, LONG edge, int outward) {
  const UINT count = GetNumTics();
  if (count < 2) return;
  const CRect channel = GetChannelRect();
  const CRect thumb = vertical ? Mirrored(GetThumbRect()) : GetThumbRect();
  const LONG first = channel.left + thumb.Width() / 2;
  const LONG last = channel.right - 1 - thumb.Width() / 2;
  const CPen pen(PS_SOLID, 1, IsWindowEnabled() ? kColourText : kColourDisabledText);
  const CSelectedObject selected(dc, pen.GetSafeHandle());
  const auto tick = [&](LONG along, int length) {
    const LONG end = edge + outward * length;
    if (vertical) {
      dc.MoveTo(edge, along);
      dc.LineTo(end, along);
    } else {
      dc.MoveTo(along, edge);
      dc.LineTo(along, end);
    }
  };
  tick(first, kEndTickLength);
  tick(last, kEndTickLength);
  const double step = static_cast<double>(last - first) / (count - 1);
  double along = first;
  for (UINT inner = 0; inner + 2 < count; ++inner) {
    along += step;
    tick(static_cast<LONG>(along), kInnerTickLength);
  }
}

void COrlSlider::PaintThumb(CDC& dc) {
  const CRect thumb = GetThumbRect();
  dc.FillSolidRect(thumb, thumbPressed ? kThumbPressed : kColourDark);
  PaintBevel(dc, thumb, thumbPressed ? 7 : 4);
}

// The painting covers everything; erasing first would flicker.
BOOL COrlSlider::OnEraseBkgnd(HDC) {
  return TRUE;
}

void COrlSlider::OnLButtonDown(UINT, CPoint point) {
  if (GetThumbRect().PtInRect(point)) {
    thumbPressed = 1;
    Invalidate();
  }
  Default();
}

void COrlSlider::OnLButtonUp(UINT, CPoint) {
  thumbPressed = 0;
  Invalidate();
  Default();
}
