// SPDX-License-Identifier: MIT
#include "library/ui/grey_icon.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include "framework/win/dc.h"

namespace {

// Blue, green, red and opacity, as the system stores the pixels of an icon.
using Pixel = RGBQUAD;

BYTE Between(BYTE first, BYTE second, int share) {
  return static_cast<BYTE>(first + (second - first) * share / 255);
}

Pixel Shade(const Pixel& pixel, COLORREF dark, COLORREF bright) {
  const int grey = (pixel.rgbRed * 30 + pixel.rgbGreen * 59 + pixel.rgbBlue * 11) / 100;
  return {Between(GetBValue(dark), GetBValue(bright), grey),
          Between(GetGValue(dark), GetGValue(bright), grey),
          Between(GetRValue(dark), GetRValue(bright), grey), pixel.rgbReserved};
}

BITMAPINFO Format(const SIZE& size) {
  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = size.cx;
  format.bmiHeader.biHeight = -size.cy;  // the first row is the top one
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  return format;
}

std::vector<Pixel> PixelsOf(const CDC& dc, const CBitmap& bitmap, const SIZE& size) {
  std::vector<Pixel> pixels(static_cast<size_t>(size.cx) * static_cast<size_t>(size.cy));
  BITMAPINFO format = Format(size);
  ::GetDIBits(dc.GetSafeHdc(), bitmap, 0, static_cast<UINT>(size.cy), pixels.data(), &format,
              DIB_RGB_COLORS);
  return pixels;
}

}  // namespace

HICON MakeGreyIcon(HICON icon, COLORREF dark, COLORREF bright) {
  ICONINFO parts = {};
  if (icon == nullptr || !::GetIconInfo(icon, &parts)) return nullptr;
  CBitmap mask;
  CBitmap colours;
  mask.Attach(parts.hbmMask);
  colours.Attach(parts.hbmColor);
  if (parts.hbmColor == nullptr) return nullptr;

  const CClientDC screen(nullptr);
  const SIZE size = colours.GetBitmapSize();
  std::vector<Pixel> pixels = PixelsOf(screen, colours, size);
  const std::vector<Pixel> transparent = PixelsOf(screen, mask, size);
  // An icon has an opacity channel if any of its pixels has opacity; otherwise its mask counts.
  const bool hasOpacity =
      std::any_of(pixels.begin(), pixels.end(), [](const Pixel& p) { return p.rgbReserved != 0; });
  for (size_t i = 0; i < pixels.size(); ++i) {
    // Pixels that the mask makes transparent must stay black, or they would change what lies below.
    if (!hasOpacity && transparent[i].rgbRed != 0) continue;
    pixels[i] = Shade(pixels[i], dark, bright);
  }

  void* bits = nullptr;
  const BITMAPINFO format = Format(size);
  CBitmap grey;
  grey.Attach(::CreateDIBSection(screen.GetSafeHdc(), &format, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (bits == nullptr) return nullptr;
  std::copy(pixels.begin(), pixels.end(), static_cast<Pixel*>(bits));
  parts.hbmColor = grey;
  return ::CreateIconIndirect(&parts);
}
