// SPDX-License-Identifier: MIT
// The caption's text from Windows 8 on: centred in the whole band, and never cut. This program has
// to run on such a system.
#include "library/ui/windows_version.h"
#include "tests/library/ui/caption_fixture.h"

namespace {

using namespace ui_test;

class CaptionOnWindows10Test : public CaptionTest {
 protected:
  // Expects the window's text to be painted as the system draws it in the middle of the whole band.
  void ExpectCentred(const std::string& text) const {
    const LONG width = FrameOf(window).right;
    const LONG boxes = width - side - caption;
    SetTitle(text);
    Send(WM_NCACTIVATE, TRUE);
    const std::vector<COLORREF> painted = CaptionPixels(boxes);
    DrawCaption(text, {0, 0, width, band}, DT_CENTER | DT_SINGLELINE | DT_VCENTER);
    EXPECT_THAT(painted, testing::Contains(RGB(180, 180, 180)));
    EXPECT_TRUE(painted == CaptionPixels(boxes)) << text;
  }
};

TEST_F(CaptionOnWindows10Test, TheSystemIsOne) {
  EXPECT_EQ(SystemVersion(), 0xA00) << "run it as Windows 10";
  EXPECT_TRUE(IsWindows8OrLater());
}

TEST_F(CaptionOnWindows10Test, TheTextIsInTheMiddleOfTheWindow) {
  Do([&] {
    Send(WM_NCACTIVATE, TRUE);
    const auto [first, last] = TextColumns();
    EXPECT_NEAR(first, size.right - 1 - last, 3);
    EXPECT_GT(first, side + 10);
    ExpectCentred("VELQUIN");
  });
}

TEST_F(CaptionOnWindows10Test, ALongTextIsCutByTheWindowAlone) {
  Do([&] {
    ASSERT_GT(WidthOf(std::string(60, 'W')), 2 * size.right);
    ExpectCentred(std::string(60, 'W'));
    ExpectCentred("ilWMilWMilWMilWMilWMilWMilWMilWMilWMilWM 0123456789");
  });
}

TEST_F(CaptionOnWindows10Test, TheCloseBoxLiesOverALongText) {
  Do([&] {
    SetTitle(std::string(60, 'W'));
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_EQ(DifferingPixels(0), 0);
  });
}

}  // namespace
