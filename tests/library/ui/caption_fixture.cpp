// SPDX-License-Identifier: MIT
#include "tests/library/ui/caption_fixture.h"

namespace ui_test {
namespace {

// A window's device context with the caption's font.
class CaptionContext {
 public:
  explicit CaptionContext(HWND owner) : window_(owner), dc_(GetWindowDC(owner)) {
    NONCLIENTMETRICSA metrics = {};
    metrics.cbSize = sizeof metrics;
    SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof metrics, &metrics, 0);
    font_ = CreateFontIndirectA(&metrics.lfCaptionFont);
    before_ = SelectObject(dc_, font_);
  }
  ~CaptionContext() {
    SelectObject(dc_, before_);
    DeleteObject(font_);
    ReleaseDC(window_, dc_);
  }
  CaptionContext(const CaptionContext&) = delete;
  CaptionContext& operator=(const CaptionContext&) = delete;

  operator HDC() const { return dc_; }

 private:
  HWND window_;
  HDC dc_;
  HFONT font_ = nullptr;
  HGDIOBJ before_ = nullptr;
};

void Fill(HDC dc, const RECT& rect, COLORREF colour) {
  HBRUSH brush = CreateSolidBrush(colour);
  FillRect(dc, &rect, brush);
  DeleteObject(brush);
}

// The pixels of a rectangle, row by row.
std::vector<COLORREF> PixelsOf(HDC source, const RECT& rect) {
  const LONG width = rect.right - rect.left;
  const LONG height = rect.bottom - rect.top;
  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = width;
  format.bmiHeader.biHeight = -height;
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  HDC copy = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
  HGDIOBJ before = SelectObject(copy, bitmap);
  EXPECT_TRUE(BitBlt(copy, 0, 0, width, height, source, rect.left, rect.top, SRCCOPY));
  GdiFlush();
  std::vector<COLORREF> pixels;
  const auto* pixel = static_cast<const DWORD*>(bits);
  for (LONG i = 0; i < width * height; ++i) {
    pixels.push_back(RGB(pixel[i] >> 16 & 0xFF, pixel[i] >> 8 & 0xFF, pixel[i] & 0xFF));
  }
  SelectObject(copy, before);
  DeleteObject(bitmap);
  DeleteDC(copy);
  return pixels;
}

}  // namespace

int SystemVersion() {
  using Function = LONG(WINAPI*)(OSVERSIONINFOW*);
  const auto function = reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), "RtlGetVersion")));
  OSVERSIONINFOW version = {};
  version.dwOSVersionInfoSize = sizeof version;
  function(&version);
  return static_cast<int>(version.dwMajorVersion << 8 | version.dwMinorVersion);
}

std::vector<COLORREF> CaptionTest::Pixels(const RECT& rect) const {
  HDC dc = GetWindowDC(window);
  std::vector<COLORREF> pixels = PixelsOf(dc, rect);
  ReleaseDC(window, dc);
  return pixels;
}

void CaptionTest::ExpectAll(RECT rect, COLORREF colour, const char* what) const {
  const std::vector<COLORREF> pixels = Pixels(rect);
  ASSERT_FALSE(pixels.empty()) << what;
  EXPECT_EQ(std::count(pixels.begin(), pixels.end(), colour), static_cast<ptrdiff_t>(pixels.size()))
      << what;
}

void CaptionTest::AddBoxes() const {
  const LONG style = GetWindowLongW(window, GWL_STYLE);
  SetWindowLongW(window, GWL_STYLE, style | WS_MAXIMIZEBOX | WS_MINIMIZEBOX);
}

std::vector<COLORREF> CaptionTest::BoxPixels(CaptionBox box) const {
  const SIZE cell = CellShown();
  const LONG right = FrameOf(window).right - side - box * caption;
  const LONG left = right - caption + (caption - cell.cx) / 2;
  const LONG top = bottom + (caption - cell.cy) / 2;
  return Pixels({left, top, left + cell.cx, top + cell.cy});
}

std::vector<COLORREF> CaptionTest::CellPixels(int row, int column) const {
  HDC picture = CreateCompatibleDC(nullptr);
  HBITMAP bitmap = LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(8030));
  HGDIOBJ before = SelectObject(picture, bitmap);
  const SIZE cell = CellShown();
  const std::vector<COLORREF> pixels =
      PixelsOf(picture, {column * 22, row * 14, column * 22 + cell.cx, row * 14 + cell.cy});
  SelectObject(picture, before);
  DeleteObject(bitmap);
  DeleteDC(picture);
  return pixels;
}

std::vector<std::pair<int, int>> CaptionTest::CellsShown(CaptionBox box) const {
  const std::vector<COLORREF> shown = BoxPixels(box);
  std::vector<std::pair<int, int>> cells;
  for (int row = 0; row < 4; ++row) {
    for (int column = 0; column < 6; ++column) {
      if (CellPixels(row, column) == shown) cells.emplace_back(row, column);
    }
  }
  return cells;
}

int CaptionTest::DifferingPixels(int column) const {
  const std::vector<COLORREF> shown = BoxPixels(kCloseBox);
  const std::vector<COLORREF> wanted = CellPixels(0, column);
  int different = 0;
  for (size_t i = 0; i < shown.size(); ++i) different += shown[i] != wanted[i] ? 1 : 0;
  return different;
}

std::pair<LONG, LONG> CaptionTest::TextColumns() const {
  const RECT area = {1, 1, size.right - side - caption, band};
  const std::vector<COLORREF> pixels = Pixels(area);
  const LONG width = area.right - area.left;
  std::pair<LONG, LONG> found = {size.right, 0};
  for (size_t i = 0; i < pixels.size(); ++i) {
    if (pixels[i] == RGB(24, 24, 24)) continue;
    const LONG x = area.left + static_cast<LONG>(i) % width;
    found = {std::min(found.first, x), std::max(found.second, x)};
  }
  return found;
}

void CaptionTest::DrawCaption(const std::string& text, RECT place, UINT format) const {
  const CaptionContext dc(window);
  Fill(dc, {1, 1, FrameOf(window).right - 1, band}, RGB(24, 24, 24));
  SetTextColor(dc, RGB(180, 180, 180));
  SetBkColor(dc, RGB(24, 24, 24));
  DrawTextA(dc, text.c_str(), -1, &place, format);
}

LONG CaptionTest::WidthOf(const std::string& text) const {
  const CaptionContext dc(window);
  SIZE extent = {};
  GetTextExtentPoint32A(dc, text.c_str(), static_cast<int>(text.size()), &extent);
  return extent.cx;
}

void CaptionTest::SetWidth(LONG width) const {
  SetWindowPos(window, nullptr, 0, 0, width, FrameOf(window).bottom, SWP_NOMOVE | SWP_NOZORDER);
  ASSERT_EQ(FrameOf(window).right, width);
}

void CaptionTest::SendCaptured(UINT message, LONG x, LONG y) const {
  POINT at = {x, y};
  RECT outer = {};
  GetWindowRect(window, &outer);
  at.x += outer.left;
  at.y += outer.top;
  ScreenToClient(window, &at);
  SendMessageW(window, message, 0, MAKELPARAM(at.x, at.y));
}

void CaptionTest::SetLeftButton(bool down) {
  BYTE keys[256] = {};
  GetKeyboardState(keys);
  keys[VK_LBUTTON] = down ? 0x80 : 0;
  SetKeyboardState(keys);
}

}  // namespace ui_test
