// SPDX-License-Identifier: MIT
#include "library/ui/orl_slider.h"

#include "library/ui/colours.h"

namespace {

constexpr COLORREF kSelection = RGB(51, 153, 255);
constexpr COLORREF kThumbPressed = RGB(36, 36, 36);
constexpr int kEndTickLength = 6;    // pixels
constexpr int kInnerTickLength = 3;  // pixels
constexpr int kTickGap = 2;          // pixels between the thumb and the ticks

// A vertical slider is a horizontal one with the axes swapped.
CRect Mirrored(const CRect& rect) {
  return {rect.top, rect.left, rect.bottom, rect.right};
}

}  // namespace

BEGIN_MESSAGE_MAP(COrlSlider, CSliderCtrl)
ON_WM_PAINT()
ON_WM_ERASEBKGND()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_CAPTURECHANGED()
END_MESSAGE_MAP()

void COrlSlider::OnPaint() {
  if (systemLook) {
    Default();
    return;
  }
  CPaintDC paint(m_hWnd);
  const CRect client = GetClientRect();
  // Painted in memory first, so that a moving thumb does not flicker.
  CMemoryDC dc(paint);
  CBitmap picture;
  picture.Attach(::CreateCompatibleBitmap(paint.GetSafeHdc(), client.Width(), client.Height()));
  const CSelectedObject selected(dc, picture.GetSafeHandle());
  PaintSlider(dc);
  paint.BitBlt(0, 0, client.Width(), client.Height(), dc, 0, 0);
}

void COrlSlider::PaintSlider(CDC& dc) {
  PaintPlain(dc, GetClientRect());
  PaintChannel(dc);
  if (!(GetStyle() & TBS_NOTICKS)) PaintTicks(dc);
  PaintThumb(dc);
  if (focusRectangle && ::GetFocus() == m_hWnd) dc.DrawFocusRect(GetClientRect());
}

bool COrlSlider::IsVertical() const {
  return (GetStyle() & TBS_VERT) != 0;
}

// Windows reports the channel of a vertical slider as if it were horizontal; other implementations
// report its actual rectangle. A channel is always longer than it is wide.
CRect COrlSlider::LyingChannel() const {
  const CRect told = GetChannelRect();
  return IsVertical() && told.Width() < told.Height() ? Mirrored(told) : told;
}

CRect COrlSlider::LyingThumb() const {
  return IsVertical() ? Mirrored(GetThumbRect()) : GetThumbRect();
}

void COrlSlider::PaintChannel(CDC& dc) {
  const bool bothSides = (GetStyle() & TBS_BOTH) != 0;
  const CRect channel = LyingChannel();
  PaintBevel(dc, IsVertical() ? Mirrored(channel) : channel, bothSides ? 9 : 5);
  if (!(GetStyle() & TBS_ENABLESELRANGE)) return;
  const int range = GetRangeMax() - GetRangeMin();
  if (range <= 0 || GetSelEnd() <= GetSelStart()) return;
  CRect inside = channel;
  inside.DeflateRect(bothSides ? 2 : 1, bothSides ? 2 : 1);
  const auto place = [&](int position) {
    return inside.left + ::MulDiv(inside.Width(), position - GetRangeMin(), range);
  };
  const CRect selected(place(GetSelStart()), inside.top, place(GetSelEnd()), inside.bottom);
  dc.FillSolidRect(IsVertical() ? Mirrored(selected) : selected, kSelection);
}

void COrlSlider::PaintTicks(CDC& dc) {
  const CRect thumb = LyingThumb();
  const DWORD style = GetStyle();
  const bool bothSides = (style & TBS_BOTH) != 0;
  if (bothSides || (style & TBS_TOP)) PaintTickRow(dc, thumb.top - 1 - kTickGap, -1);
  if (bothSides || !(style & TBS_TOP)) PaintTickRow(dc, thumb.bottom + kTickGap, 1);
}

// Draws one row of ticks that begin at `edge` and grow upward (-1) or downward (1).
void COrlSlider::PaintTickRow(CDC& dc, LONG edge, int outward) {
  const UINT count = GetNumTics();
  if (count < 2) return;
  const CRect channel = LyingChannel();
  const LONG first = channel.left;
  const LONG last = channel.right - 1;
  const bool vertical = IsVertical();
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

// Another window has captured the mouse, so the release will not come here.
void COrlSlider::OnCaptureChanged(HWND) {
  thumbPressed = 0;
  Invalidate();
  Default();
}
