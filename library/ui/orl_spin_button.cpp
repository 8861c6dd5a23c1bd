// SPDX-License-Identifier: MIT
#include "library/ui/orl_spin_button.h"

#include <utility>

#include "res/resource_ids.h"

namespace {

constexpr int kColumns = 2;
constexpr int kRows = 3;

// Returns where a piece of the given length begins when it is centred.
LONG Centred(LONG first, LONG last, LONG length) {
  return first + (last - first - length) / 2;
}

// Copies a cell with its axes swapped, which makes the up arrow point to the left.
void CopyMirrored(CDC& dc, const CRect& half, const CDC& images, const CRect& cell) {
  const LONG left = Centred(half.left, half.right, cell.Height());
  const LONG top = Centred(half.top, half.bottom, cell.Width());
  for (LONG y = 0; y < cell.Height(); ++y) {
    for (LONG x = 0; x < cell.Width(); ++x) {
      dc.SetPixel(left + y, top + x, images.GetPixel(cell.left + x, cell.top + y));
    }
  }
}

}  // namespace

BEGIN_MESSAGE_MAP(COrlSpinButton, CSpinButtonCtrl)
ON_WM_PAINT()
ON_WM_LBUTTONDOWN()
ON_WM_LBUTTONUP()
ON_WM_MOUSEMOVE()
ON_WM_CANCELMODE()
ON_WM_CAPTURECHANGED()
END_MESSAGE_MAP()

COrlSpinButton::COrlSpinButton() {
  arrows.LoadBitmap(IDB_SPIN_ARROWS);
}

void COrlSpinButton::OnPaint() {
  if (systemLook) {
    Default();
    return;
  }
  CPaintDC dc(m_hWnd);
  for (int arrow = 0; arrow < kArrows; ++arrow) PaintArrow(dc, arrow);
}

// The cell is centred in its half. The rest of the half takes the colour of the cell's corner; a
// cell that is too large is cut off on both sides.
void COrlSpinButton::PaintArrow(CDC& dc, int arrow) {
  const SIZE size = arrows.GetBitmapSize();
  int row = arrow == pressedArrow ? 1 : 0;
  if (!IsWindowEnabled()) row = 2;
  CRect cell(0, 0, size.cx / kColumns, size.cy / kRows);
  cell.OffsetRect(arrow * cell.Width(), row * cell.Height());

  CMemoryDC images(dc);
  const CSelectedObject selected(images, arrows.GetSafeHandle());
  const CRect half = ArrowRect(arrow);
  const int all = dc.SaveDC();
  dc.IntersectClipRect(half);
  dc.FillSolidRect(half, images.GetPixel(cell.left, cell.top));
  if (IsHorizontal()) {
    CopyMirrored(dc, half, images, cell);
  } else {
    dc.BitBlt(Centred(half.left, half.right, cell.Width()),
              Centred(half.top, half.bottom, cell.Height()), cell.Width(), cell.Height(), images,
              cell.left, cell.top);
  }
  dc.RestoreDC(all);
  PaintBevel(dc, half, 4);
}

bool COrlSpinButton::IsHorizontal() const {
  return (GetStyle() & UDS_HORZ) != 0;
}

CRect COrlSpinButton::ArrowRect(int arrow) const {
  CRect rect = GetClientRect();
  LONG& middle = IsHorizontal() ? (arrow == 0 ? rect.right : rect.left)
                                : (arrow == 0 ? rect.bottom : rect.top);
  middle = (IsHorizontal() ? GetClientRect().Width() : GetClientRect().Height()) / 2;
  return rect;
}

int COrlSpinButton::ArrowAt(CPoint point) const {
  for (int arrow = 0; arrow < kArrows; ++arrow) {
    if (ArrowRect(arrow).PtInRect(point)) return arrow;
  }
  return kNoArrow;
}

void COrlSpinButton::SetPressed(int arrow) {
  if (std::exchange(pressedArrow, arrow) != arrow) Invalidate();
}

void COrlSpinButton::OnLButtonDown(UINT, CPoint point) {
  heldArrow = ArrowAt(point);
  SetPressed(heldArrow);
  Default();
}

void COrlSpinButton::OnMouseMove(UINT, CPoint point) {
  if (heldArrow != kNoArrow) SetPressed(ArrowAt(point) == heldArrow ? heldArrow : kNoArrow);
  Default();
}

void COrlSpinButton::OnLButtonUp(UINT, CPoint) {
  LetGo();
  Default();
}

void COrlSpinButton::OnCancelMode() {
  LetGo();
  Default();
}

// Another window has captured the mouse, so the release will not come here.
void COrlSpinButton::OnCaptureChanged(HWND) {
  LetGo();
  Default();
}

void COrlSpinButton::LetGo() {
  heldArrow = kNoArrow;
  SetPressed(kNoArrow);
}
