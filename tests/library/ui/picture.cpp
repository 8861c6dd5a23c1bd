// SPDX-License-Identifier: MIT
#include "tests/library/ui/picture.h"

#include <algorithm>
#include <stdexcept>

std::ostream& operator<<(std::ostream& stream, const Colour& colour) {
  return stream << "RGB(" << int{GetRValue(colour.value)} << ", " << int{GetGValue(colour.value)}
                << ", " << int{GetBValue(colour.value)} << ")";
}

Picture::Picture(int width, int height) : size(width, height) {
  Make();
  std::fill_n(pixels, width * height, 0xFF00FFu);
}

Picture::Picture(HWND window, bool frame) {
  CRect rect;
  frame ? ::GetWindowRect(window, &rect) : ::GetClientRect(window, &rect);
  size = rect.Size();
  Make();
  ::RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW | RDW_ALLCHILDREN);
  const HDC source = frame ? ::GetWindowDC(window) : ::GetDC(window);
  const BOOL copied = ::BitBlt(memory, 0, 0, size.cx, size.cy, source, 0, 0, SRCCOPY);
  ::ReleaseDC(window, source);
  if (!copied) throw std::runtime_error("the window could not be read");
}

void Picture::Make() {
  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = size.cx;
  format.bmiHeader.biHeight = -size.cy;
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  memory = ::CreateCompatibleDC(nullptr);
  bitmap = ::CreateDIBSection(memory, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
  if (bits == nullptr) throw std::runtime_error("no memory for a picture");
  pixels = static_cast<uint32_t*>(bits);
  before = ::SelectObject(memory, bitmap);
  dc = new CDC(memory);
}

Picture::~Picture() {
  delete dc;
  ::SelectObject(memory, before);
  ::DeleteObject(bitmap);
  ::DeleteDC(memory);
}

Colour Picture::At(LONG x, LONG y) const {
  if (x < 0 || y < 0 || x >= size.cx || y >= size.cy) {
    throw std::out_of_range("no such pixel: " + std::to_string(x) + ", " + std::to_string(y));
  }
  ::GdiFlush();
  const uint32_t pixel = pixels[y * size.cx + x];
  return Colour(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
}

CRect Picture::Around(Colour colour, const CRect& part) const {
  CRect around(size.cx, size.cy, 0, 0);
  for (LONG y = part.top; y < part.bottom; ++y) {
    for (LONG x = part.left; x < part.right; ++x) {
      if (At(x, y) != colour) continue;
      around.left = std::min(around.left, x);
      around.top = std::min(around.top, y);
      around.right = std::max(around.right, x + 1);
      around.bottom = std::max(around.bottom, y + 1);
    }
  }
  return around.right == 0 ? CRect() : around;
}

int Picture::Count(Colour colour, const CRect& part) const {
  int count = 0;
  for (LONG y = part.top; y < part.bottom; ++y) {
    for (LONG x = part.left; x < part.right; ++x) count += At(x, y) == colour ? 1 : 0;
  }
  return count;
}
