// SPDX-License-Identifier: MIT
#include "library/ui/paint_caption.h"

#include <algorithm>

#include "library/ui/caption_text.h"
#include "library/ui/colours.h"
#include "library/ui/frame_sizes.h"
#include "library/ui/windows_version.h"
#include "res/resource_ids.h"

namespace {

constexpr COLORREF kCaptionActive = RGB(24, 24, 24);
constexpr COLORREF kCaptionInactive = RGB(57, 57, 57);
constexpr COLORREF kTextInactive = RGB(86, 86, 86);

constexpr int kImageColumns = 6;
constexpr int kImageRows = 4;

CRect WindowFrame(HWND window) {
  CRect rect;
  ::GetWindowRect(window, &rect);
  rect.OffsetRect(-rect.left, -rect.top);
  return rect;
}

CString TextOf(HWND window) {
  char text[256];
  const int length = ::GetWindowTextA(window, text, sizeof text);
  return CString(text, length);
}

LOGFONTA CaptionFont() {
  // The size of the record's older layout, which every Windows accepts.
  constexpr UINT kOlderSize = 340;
  NONCLIENTMETRICSA metrics = {};
  metrics.cbSize = kOlderSize;
  ::SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, kOlderSize, &metrics, 0);
  return metrics.lfCaptionFont;
}

// The client area in the coordinates of the window.
CRect ClientInWindow(HWND window) {
  CRect outer;
  CRect client;
  ::GetWindowRect(window, &outer);
  ::GetClientRect(window, &client);
  ::MapWindowPoints(window, nullptr, reinterpret_cast<POINT*>(&client), 2);
  client.OffsetRect(-outer.left, -outer.top);
  return client;
}

}  // namespace

CPaintCaption::CPaintCaption() {
  buttonBitmap.LoadBitmap(IDB_CAPTION_BUTTONS);
}

void CPaintCaption::Paint(HWND window, bool active) {
  if (::IsIconic(window)) return;
  lastActive = active;
  const CRect frame = WindowFrame(window);
  PlaceButtons(window, frame);
  CWindowDC dc(window);
  // If the bands are wider than the frame, the dialog's own painting has to stay.
  dc.ExcludeClipRect(ClientInWindow(window));
  PaintFrame(dc, frame, active);
  PaintText(dc, window, frame, active);
  PaintButtons(dc, window, active);
}

void CPaintCaption::PlaceButtons(HWND window, const CRect& frame) {
  const FrameSizes sizes;
  const LONG style = ::GetWindowLongA(window, GWL_STYLE);
  CRect place(frame.right - sizes.side - sizes.caption, sizes.bottom, frame.right - sizes.side,
              sizes.band);
  const bool shown[kButtonCount] = {true, (style & WS_MAXIMIZEBOX) != 0,
                                    (style & WS_MINIMIZEBOX) != 0, false};
  for (int button = 0; button < kButtonCount; ++button) {
    buttonRects[button].SetRectEmpty();
    if (!shown[button]) continue;
    buttonRects[button] = place;
    place.OffsetRect(-sizes.caption, 0);
  }
}

void CPaintCaption::PaintFrame(CDC& dc, const CRect& frame, bool active) const {
  const FrameSizes sizes;
  const LONG width = frame.Width();
  const LONG height = frame.Height();
  const auto fill = [&](LONG x, LONG y, LONG w, LONG h, COLORREF colour) {
    dc.FillSolidRect(CRect(x, y, x + w, y + h), colour);
  };
  fill(0, 0, width, sizes.band, active ? kCaptionActive : kCaptionInactive);
  // The system's frame can be wider than the bands; no part of it may stay unpainted.
  fill(0, sizes.band, width, height - sizes.band, kColourDark);
  fill(0, sizes.band, width, 1, kColourDark);
  fill(1, sizes.band, sizes.side, height, kColourDark);
  fill(width - sizes.side - 1, sizes.band, sizes.side, height, kColourDark);
  fill(sizes.side, height - sizes.bottom - 1, width - 2 * sizes.side, sizes.bottom, kColourDark);
  dc.FrameSolidRect(frame, active ? kCaptionInactive : kColourBlack);
}

void CPaintCaption::PaintText(CDC& dc, HWND window, const CRect& frame, bool active) const {
  const FrameSizes sizes;
  CFont font;
  font.CreateFontIndirect(CaptionFont());
  const CSelectedObject selected(dc, font.GetSafeHandle());
  dc.SetTextColor(active ? kColourText : kTextInactive);
  dc.SetBkColor(active ? kCaptionActive : kCaptionInactive);
  CRect band(0, 0, frame.Width(), sizes.band);
  CString text = TextOf(window);
  UINT format = DT_SINGLELINE | DT_VCENTER | DT_NOPREFIX;
  if (IsWindows8OrLater()) {
    format |= DT_CENTER;
  } else {
    LONG end = band.right;
    for (const CRect& rect : buttonRects) {
      if (!rect.IsRectEmpty()) end = std::min(end, rect.left);
    }
    band.left = std::max<LONG>(sizes.side, hasCustomButtons ? customArea.right : 0);
    band.right = end;
    const auto width = [&](const CString& part) {
      return dc.GetTextExtent(part, part.GetLength()).cx;
    };
    text = CutCaption(text, band.Width(), width);
    format |= DT_LEFT;
  }
  dc.DrawText(text, band, format);
}

void CPaintCaption::PaintButtons(CDC& dc, HWND window, bool active) {
  CMemoryDC images(dc);
  const CSelectedObject selected(images, buttonBitmap.GetSafeHandle());
  constexpr int kRestoreRow = 3;
  for (int button = kClose; button <= kMinimise; ++button) {
    if (buttonRects[button].IsRectEmpty()) continue;
    const bool restores = button == kMaximise && ::IsZoomed(window);
    PaintButton(dc, images, buttonRects[button], restores ? kRestoreRow : button,
                Column(button, active));
  }
}

int CPaintCaption::Column(int button, bool active) const {
  const int normal = active ? 0 : 3;
  if (button != hoverButton) return normal;
  if (!pressed) return normal + 1;
  return button == pressedButton ? normal + 2 : normal;
}

void CPaintCaption::PaintButton(CDC& dc, const CDC& images, const CRect& rect, int row,
                                int column) const {
  const SIZE size = buttonBitmap.GetBitmapSize();
  const LONG cellWidth = size.cx / kImageColumns;
  const LONG cellHeight = size.cy / kImageRows;
  const LONG x = rect.left + std::max<LONG>(0, (rect.Width() - cellWidth) / 2);
  const LONG y = rect.top + std::max<LONG>(0, (rect.Height() - cellHeight) / 2);
  dc.BitBlt(x, y, std::min(rect.Width(), cellWidth), std::min(rect.Height(), cellHeight), images,
            column * cellWidth, row * cellHeight);
}

LRESULT CPaintCaption::HitTest(HWND window, CPoint screen) {
  CRect outer;
  ::GetWindowRect(window, &outer);
  PlaceButtons(window, WindowFrame(window));
  const CPoint inWindow(screen.x - outer.left, screen.y - outer.top);
  const LRESULT hits[] = {HTCLOSE, HTMAXBUTTON, HTMINBUTTON};
  for (int button = kClose; button <= kMinimise; ++button) {
    if (buttonRects[button].PtInRect(inWindow)) return hits[button];
  }
  return HTNOWHERE;
}

int CPaintCaption::ButtonOf(LRESULT hit) {
  switch (hit) {
    case HTCLOSE:
      return kClose;
    case HTMAXBUTTON:
      return kMaximise;
    case HTMINBUTTON:
      return kMinimise;
    default:
      return kNoButton;
  }
}

bool CPaintCaption::PointerMoved(HWND window, LRESULT hit) {
  // The release did not arrive here.
  if (pressed && ::GetKeyState(VK_LBUTTON) >= 0) CancelPress(window);
  const int button = ButtonOf(hit);
  if (button == hoverButton) return false;
  hoverButton = button;
  Repaint(window);
  return button != kNoButton;
}

void CPaintCaption::PointerLeft(HWND window) {
  hoverButton = kNoButton;
  Repaint(window);
}

bool CPaintCaption::ButtonPressed(HWND window, LRESULT hit) {
  CancelPress(window);
  const int button = ButtonOf(hit);
  if (button == kNoButton) return false;
  ::SetCapture(window);
  hoverButton = pressedButton = button;
  pressed = true;
  Repaint(window);
  return true;
}

// The button is not highlighted either until the pointer moves over it again.
void CPaintCaption::CancelPress(HWND window) {
  if (!pressed) return;
  pressed = false;
  hoverButton = pressedButton = kNoButton;
  if (::GetCapture() == window) ::ReleaseCapture();
  Repaint(window);
}

bool CPaintCaption::ButtonReleased(HWND window, LRESULT hit) {
  if (!pressed) return false;
  const bool carriedOut = ButtonOf(hit) == pressedButton;
  const int button = pressedButton;
  CancelPress(window);
  if (!carriedOut) return true;
  const WPARAM zoom = ::IsZoomed(window) ? SC_RESTORE : SC_MAXIMIZE;
  const WPARAM commands[] = {SC_CLOSE, zoom, SC_MINIMIZE};
  ::PostMessageA(window, WM_SYSCOMMAND, commands[button], 0);
  return true;
}

void CPaintCaption::SetCustomButtons(UINT bitmapId, int count) {
  ClearCustomButtons();
  customBitmap.LoadBitmap(bitmapId);
  customButtons.resize(static_cast<size_t>(count));
  hasCustomButtons = true;
}

void CPaintCaption::ClearCustomButtons() {
  customBitmap.DeleteObject();
  customButtons.clear();
  customArea.SetRectEmpty();
  customHover.SetRectEmpty();
  hasCustomButtons = false;
}
