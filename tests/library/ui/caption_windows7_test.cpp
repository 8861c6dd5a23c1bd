// SPDX-License-Identifier: MIT
// The caption's text before Windows 8: it begins at the frame and is cut before the boxes. This
// program has to run on such a system.
#include "library/ui/paint_caption.h"
#include "library/ui/windows_version.h"
#include "res/resource_ids.h"
#include "tests/library/ui/caption_fixture.h"

namespace {

using namespace ui_test;

class CaptionOnWindows7Test : public CaptionTest {
 protected:
  // The columns between the frame and the first box.
  LONG Room(int boxes = 1) const { return FrameOf(window).right - 2 * side - boxes * caption; }
  // Makes the window so wide that a text just fits, and some pixels wider.
  void FitWidth(const std::string& text, LONG more, int boxes = 1) const {
    SetWidth(2 * side + boxes * caption + WidthOf(text) + more);
  }
  // Expects a text to be painted as the system draws it from the frame on.
  void ExpectPainted(const std::string& text, int boxes = 1) const {
    const LONG end = side + Room(boxes);
    Send(WM_NCACTIVATE, TRUE);
    const std::vector<COLORREF> painted = CaptionPixels(end);
    DrawCaption(text, {side, 0, end, band}, DT_LEFT | DT_SINGLELINE | DT_VCENTER);
    EXPECT_TRUE(painted == CaptionPixels(end)) << text;
  }
  static std::string Ws(size_t count) { return std::string(count, 'W'); }
};

TEST_F(CaptionOnWindows7Test, TheSystemIsOne) {
  EXPECT_EQ(SystemVersion(), 0x601) << "run it as Windows 7";
  EXPECT_FALSE(IsWindows8OrLater());
}

TEST_F(CaptionOnWindows7Test, TheTextBeginsAtTheFrame) {
  Do([&] {
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_NEAR(TextColumns().first, side, 3);
    ExpectPainted("VELQUIN");
  });
}

TEST_F(CaptionOnWindows7Test, ATextThatFitsIsPaintedWhole) {
  Do([&] {
    SetTitle(Ws(20));
    FitWidth(Ws(20), 0);
    ExpectPainted(Ws(20));
  });
}

TEST_F(CaptionOnWindows7Test, ALongTextIsCutBeforeTheCloseBox) {
  Do([&] {
    SetTitle(Ws(40));
    FitWidth(Ws(20) + "...", 0);
    ExpectPainted(Ws(20) + "...");
    FitWidth(Ws(20) + "...", -1);
    ExpectPainted(Ws(19) + "...");
  });
}

TEST_F(CaptionOnWindows7Test, ALongTextIsCutBeforeTheLeftmostBox) {
  Do([&] {
    AddBoxes();
    SetTitle(Ws(40));
    FitWidth(Ws(20) + "...", 0, 3);
    ExpectPainted(Ws(20) + "...", 3);
    FitWidth(Ws(20) + "...", -1, 3);
    ExpectPainted(Ws(19) + "...", 3);
  });
}

TEST_F(CaptionOnWindows7Test, NothingIsPaintedWhereNotEvenOneCharacterFits) {
  Do([&] {
    SetTitle(Ws(40));
    FitWidth("W...", 0);
    ExpectPainted("W...");
    FitWidth("W...", -1);
    ExpectPainted("");
  });
}

// The boxes have not been placed, so they keep no room free.
TEST_F(CaptionOnWindows7Test, CustomBoxesDoNotMoveTheTextIntoTheFrame) {
  Do([&] {
    CPaintCaption painter;
    painter.Paint(window, true);
    const auto before = TextColumns();
    painter.SetCustomButtons(IDB_CAPTION_BUTTONS, 2);
    painter.Paint(window, true);
    EXPECT_EQ(TextColumns(), before);
  });
}

}  // namespace
