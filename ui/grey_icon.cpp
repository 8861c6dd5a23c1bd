// SPDX-License-Identifier: MIT
#include "ui/grey_icon.h"

#include "framework/win/dc.h"

namespace {

BYTE Between(BYTE first, BYTE second, int share) {
  return static_cast<BYTE>(first + (second - first) * share / 255);
}

COLORREF Shade(COLORREF pixel, COLORREF dark, COLORREF bright) {
  const int grey = (GetRValue(pixel) * 30 + GetGValue(pixel) * 59 + GetBValue(pixel) * 11) / 100;
  return RGB(Between(GetRValue(dark), GetRValue(bright), grey),
             Between(GetGValue(dark), GetGValue(bright), grey),
             Between(GetBValue(dark), GetBValue(bright), grey));
}

}  // namespace

HICON MakeGreyIcon(HICON icon, CSize size, COLORREF dark, COLORREF bright) {
  ICONINFO parts = {};
  if (icon == nullptr || !::GetIconInfo(icon, &parts)) return nullptr;
  CBitmap mask;
  CBitmap colours;
  mask.Attach(parts.hbmMask);
  colours.Attach(parts.hbmColor);
  if (parts.hbmColor == nullptr) return nullptr;
  {
    CDC screen(::GetDC(nullptr));
    CMemoryDC pixels(screen);
    CMemoryDC transparent(screen);
    ::ReleaseDC(nullptr, screen.GetSafeHdc());
    const CSelectedObject selected(pixels, colours.GetSafeHandle());
    const CSelectedObject selectedMask(transparent, mask.GetSafeHandle());
    for (LONG y = 0; y < size.cy; ++y) {
      for (LONG x = 0; x < size.cx; ++x) {
        if (transparent.GetPixel(x, y) != RGB(0, 0, 0)) continue;
        pixels.SetPixel(x, y, Shade(pixels.GetPixel(x, y), dark, bright));
      }
    }
  }
  return ::CreateIconIndirect(&parts);
}
