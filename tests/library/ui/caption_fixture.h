// SPDX-License-Identifier: MIT
// What the tests of caption and frame share: a hand controller to look at, pixel by pixel, and the
// mouse's messages to it.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/library/ui/open_controller.h"

namespace ui_test {

/// The colours of a caption.
struct CaptionLook {
  bool active;
  COLORREF caption, frame, text;
};
inline constexpr CaptionLook kCaptionLooks[] = {
    {true, RGB(24, 24, 24), RGB(57, 57, 57), RGB(180, 180, 180)},
    {false, RGB(57, 57, 57), RGB(0, 0, 0), RGB(86, 86, 86)}};

/// The caption's boxes, counted from the right edge.
enum CaptionBox { kCloseBox = 0, kMaximiseBox = 1, kMinimiseBox = 2 };

/// What the system says it is, whatever the program's manifest: 0x601 for Windows 7, 0xA00 for
/// Windows 10.
int SystemVersion();

class CaptionTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(window, nullptr); }

  /// Everything that a test does and looks at happens in one go on the window's thread, so that no
  /// other message comes between.
  void Do(const std::function<void()>& body) const { controller.host.Do(body); }
  void Send(UINT message, WPARAM wParam) const { SendMessageW(window, message, wParam, 0); }
  COLORREF At(LONG x, LONG y) const { return PixelOf(window, x, y); }
  /// The pixels of a part of the window, row by row.
  std::vector<COLORREF> Pixels(const RECT& rect) const;
  void ExpectAll(RECT rect, COLORREF colour, const char* what) const;

  /// Gives the window the two other boxes.
  void AddBoxes() const;
  /// Which cells of the boxes' picture look like what a box shows: (row, column) each. Rows: close,
  /// maximise, minimise, restore. Columns: 0 normal, 1 hot, 2 pressed, and three more of an
  /// inactive window.
  std::vector<std::pair<int, int>> CellsShown(CaptionBox box) const;
  /// Where a box shows its cell, row by row.
  std::vector<COLORREF> BoxPixels(CaptionBox box) const;
  /// Pixels of the close box that differ from one of its cells.
  int DifferingPixels(int column) const;

  /// The first and the last column of an active caption's text.
  std::pair<LONG, LONG> TextColumns() const;
  /// The caption's pixels inside of the frame, up to a column.
  std::vector<COLORREF> CaptionPixels(LONG right) const { return Pixels({1, 1, right, band}); }
  /// Draws a text on an active caption, and nothing else, as the system does it.
  void DrawCaption(const std::string& text, RECT place, UINT format) const;
  /// The width of a text in the caption's font, in pixels.
  LONG WidthOf(const std::string& text) const;
  void SetTitle(const std::string& text) const { SetWindowTextA(window, text.c_str()); }
  /// Makes the window as wide as wanted; its height stays.
  void SetWidth(LONG width) const;

  /// The mouse's messages while the window has taken it. @param x, y in the window's coordinates
  void SendCaptured(UINT message, LONG x, LONG y) const;
  static void SetLeftButton(bool down);

  const OpenController controller;
  HWND window = controller.window;
  const RECT size = FrameOf(window);  // as it was opened
  const LONG side = GetSystemMetrics(SM_CXSIZEFRAME) + GetSystemMetrics(SM_CXFIXEDFRAME) +
                    GetSystemMetrics(SM_CXBORDER);
  const LONG bottom = GetSystemMetrics(SM_CYSIZEFRAME) + GetSystemMetrics(SM_CYFIXEDFRAME) +
                      GetSystemMetrics(SM_CYBORDER);
  const LONG caption = GetSystemMetrics(SM_CYCAPTION);
  const LONG band = bottom + caption;
  const POINT closeBox = {size.right - side - caption / 2, bottom + caption / 2};

 private:
  // As much of a cell as fits into a box.
  SIZE CellShown() const { return {std::min<LONG>(22, caption), std::min<LONG>(14, caption)}; }
  std::vector<COLORREF> CellPixels(int row, int column) const;
};

}  // namespace ui_test
