// SPDX-License-Identifier: MIT
// Caption and frame as the library paints them, pixel by pixel.
#include "library/ui/frame_sizes.h"
#include "library/ui/orl_dialog.h"
#include "tests/library/ui/caption_fixture.h"
#include "tests/support/replaced_import.h"

namespace {

using namespace ui_test;

constexpr COLORREF kDark = RGB(34, 34, 34);

TEST_F(CaptionTest, BandsAndFrameHaveTheirColours) {
  const LONG w = size.right;
  const LONG h = size.bottom;
  for (const CaptionLook& look : kCaptionLooks) {
    SCOPED_TRACE(look.active);
    Do([&] {
      Send(WM_NCACTIVATE, look.active);
      ExpectAll({0, 0, w, 1}, look.frame, "upper edge");
      ExpectAll({0, h - 1, w, h}, look.frame, "lower edge");
      ExpectAll({0, 0, 1, h}, look.frame, "left edge");
      ExpectAll({w - 1, 0, w, h}, look.frame, "right edge");
      ExpectAll({1, 1, w - 1, 6}, look.caption, "caption above the text");
      ExpectAll({1, 1, 6, band}, look.caption, "left end of the caption");
      ExpectAll({w - side + 1, 1, w - 1, band}, look.caption, "right end of the caption");
      ExpectAll({1, band, side, h - 1}, kDark, "left band");
      ExpectAll({w - side, band, w - 1, h - 1}, kDark, "right band");
      ExpectAll({1, h - bottom, w - 1, h - 1}, kDark, "lower band");
    });
  }
}

TEST_F(CaptionTest, TheClientAreaBelowTheBandsIsLeftAlone) {
  Do([&] {
    const LONG x = side + 20;
    const LONG y = band + FromDialogUnits(window, 0, 3, 0, 0).top;
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const COLORREF before = At(x, y);
    EXPECT_NE(before, kDark);  // the frame round the direction buttons
    Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(At(x, y), before);
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_EQ(At(x, y), before);
  });
}

TEST_F(CaptionTest, TheTextHasItsColour) {
  for (const CaptionLook& look : kCaptionLooks) {
    Do([&] {
      Send(WM_NCACTIVATE, look.active);
      const std::vector<COLORREF> pixels = CaptionPixels(size.right - side - caption);
      EXPECT_GT(std::count(pixels.begin(), pixels.end(), look.text), 20) << look.active;
    });
  }
}

std::vector<UINT> askedSizes;
decltype(&SystemParametersInfoA) systemParameters = nullptr;

BOOL WINAPI AskedParameters(UINT action, UINT number, void* data, UINT update) {
  if (action == SPI_GETNONCLIENTMETRICS) {
    askedSizes.push_back(number);
    askedSizes.push_back(static_cast<NONCLIENTMETRICSA*>(data)->cbSize);
  }
  return systemParameters(action, number, data, update);
}

// The record's older size: Windows before Vista knows no other.
TEST_F(CaptionTest, TheFontIsAskedForWithTheOlderSizeOfTheRecord) {
  Do([&] {
    askedSizes.clear();
    const ReplacedImport standIn(GetModuleHandleW(nullptr), "SystemParametersInfoA",
                                 reinterpret_cast<void*>(&AskedParameters));
    systemParameters = reinterpret_cast<decltype(systemParameters)>(standIn.Original());
    Send(WM_NCACTIVATE, TRUE);
  });
  EXPECT_THAT(askedSizes, testing::ElementsAre(340u, 340u));
}

TEST_F(CaptionTest, ADisabledWindowIsPaintedInactive) {
  Do([&] {
    EnableWindow(window, FALSE);
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_EQ(At(3, 3), RGB(57, 57, 57));
    EnableWindow(window, TRUE);
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_EQ(At(3, 3), RGB(24, 24, 24));
  });
}

TEST_F(CaptionTest, ADisabledWindowIsPaintedInactiveInSpiteOfTheStayActiveFlag) {
  Do([&] {
    CWnd* object = CWnd::FromHandlePermanent(window);
    object->m_nFlags |= WF_STAYACTIVE;
    EnableWindow(window, FALSE);
    for (const WPARAM active : {TRUE, FALSE}) {
      Send(WM_NCACTIVATE, active);
      EXPECT_EQ(At(3, 3), RGB(57, 57, 57)) << active;
    }
    EnableWindow(window, TRUE);
    object->m_nFlags &= ~WF_STAYACTIVE;
  });
}

TEST_F(CaptionTest, TheStayActiveFlagKeepsItActive) {
  Do([&] {
    CWnd* object = CWnd::FromHandlePermanent(window);
    object->m_nFlags |= WF_STAYACTIVE;
    Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(At(3, 3), RGB(24, 24, 24));
    object->m_nFlags &= ~WF_STAYACTIVE;
    Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(At(3, 3), RGB(57, 57, 57));
  });
}

// Nor is it counted as painted: the next repaint shows the state of the last real one.
TEST_F(CaptionTest, AMinimisedWindowIsNotPainted) {
  Do([&] {
    CPaintCaption painter;
    painter.Paint(window, true);
    ShowWindow(window, SW_MINIMIZE);
    painter.Paint(window, false);
    ShowWindow(window, SW_RESTORE);
    painter.Repaint(window);
    EXPECT_EQ(At(3, 3), RGB(24, 24, 24));
  });
}

// A window whose frame is wider than the painted bands, as frames with a padded border or of
// another resolution are.
constexpr LONG kWideFrame = 40;  // pixels

LRESULT CALLBACK WideFrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCALCSIZE) {
    InflateRect(reinterpret_cast<RECT*>(lParam), -kWideFrame, -kWideFrame);
    return 0;
  }
  return message == WM_NCPAINT ? 0 : DefWindowProcW(window, message, wParam, lParam);
}

TEST(CaptionFrameTest, AFrameThatIsWiderThanTheBandsIsPaintedToItsClientArea) {
  App();
  WNDCLASSW description = {};
  description.lpfnWndProc = &WideFrameProc;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = L"VelquinTestWideFrame";
  RegisterClassW(&description);
  HWND window = CreateWindowExW(0, L"VelquinTestWideFrame", L"", WS_POPUP | WS_VISIBLE, 100, 100,
                                200, 160, nullptr, nullptr, description.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  CPaintCaption painter;
  painter.Paint(window, true);
  const FrameSizes sizes;
  ASSERT_LT(sizes.band, kWideFrame - 2);
  for (const POINT at : {POINT{kWideFrame - 1, 80},
                         {200 - kWideFrame, 80},
                         {100, kWideFrame - 1},
                         {100, 160 - kWideFrame},
                         {sizes.side, sizes.band + 1}}) {
    EXPECT_EQ(PixelOf(window, at.x, at.y), kDark) << at.x << ' ' << at.y;
  }
  DestroyWindow(window);
}

}  // namespace
