// SPDX-License-Identifier: MIT
#include "library/ui/orl_group_box.h"

#include "tests/library/ui/control_fixture.h"

namespace {

const Colour kText(180, 180, 180);
const Colour kDisabledText(107, 107, 107);
const Colour kBlack(0, 0, 0);
const Colour kLight(92, 92, 92);
const Colour kDark(34, 34, 34);
constexpr int kWidth = 120;
constexpr int kHeight = 60;

class GroupBox : public ControlFixture {
 protected:
  void Make(const char* text, DWORD style = 0) {
    Add("Button", text, BS_GROUPBOX | style, {10, 10, 10 + kWidth, 10 + kHeight});
    ASSERT_TRUE(box.AttachGroupBox(kId, &parent));
  }
  Picture Look() const {
    // The ground is the parent's, so that one is painted first.
    ::RedrawWindow(parent.m_hWnd, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    return Picture::OfClient(box.m_hWnd);
  }
  // The size of a text in the parent's font.
  CSize SizeOf(const char* text) const {
    Picture picture(1, 1);
    const CSelectedObject font(picture.Dc(),
                               reinterpret_cast<HGDIOBJ>(parent.SendMessage(WM_GETFONT)));
    return picture.Dc().GetTextExtent(text, ::lstrlenA(text));
  }
  // The columns of the frame's upper black line that are left free.
  static CRect Gap(const Picture& picture, LONG y) {
    LONG first = 1;
    while (picture.At(first, y) == kBlack) ++first;
    LONG last = kWidth - 2;
    while (picture.At(last - 1, y) == kBlack) --last;
    return {first, y, last, y + 1};
  }

  COrlGroupBox box;
};

}  // namespace

TEST_F(GroupBox, HasTwoFramesOneWithinTheOther) {
  Make("Group");
  const Picture picture = Look();
  const LONG top = SizeOf("Group").cy / 2;
  for (LONG y = top; y < kHeight - 1; ++y) {
    EXPECT_EQ(picture.At(0, y), kBlack);
    EXPECT_EQ(picture.At(kWidth - 2, y), kBlack);
  }
  for (LONG y = top + 1; y < kHeight; ++y) EXPECT_EQ(picture.At(kWidth - 1, y), kLight);
  for (LONG y = top + 1; y < kHeight - 2; ++y) EXPECT_EQ(picture.At(1, y), kLight);
  for (LONG x = 0; x < kWidth - 1; ++x) EXPECT_EQ(picture.At(x, kHeight - 2), kBlack);
  for (LONG x = 1; x < kWidth; ++x) EXPECT_EQ(picture.At(x, kHeight - 1), kLight);
  EXPECT_EQ(picture.At(kWidth - 10, top), kBlack);
  EXPECT_EQ(picture.At(kWidth - 10, top + 1), kLight);
  EXPECT_EQ(picture.At(kWidth - 10, top - 1), kDark);
  EXPECT_EQ(picture.At(60, 40), kDark);
}

TEST_F(GroupBox, LeavesItsFrameOpenForTheTextOnTheLeft) {
  Make("Group");
  const CSize text = SizeOf("Group");
  const Picture picture = Look();
  const CRect gap = Gap(picture, text.cy / 2);
  EXPECT_EQ(gap.left, 6);
  EXPECT_EQ(gap.right, 6 + text.cx);
  const CRect shown = picture.Around(kText);
  EXPECT_GE(shown.left, 6);
  EXPECT_LE(shown.right, 6 + text.cx);
  EXPECT_GT(picture.Count(kText), 0);
}

TEST_F(GroupBox, HasItsTextInTheMiddleWithEitherBitOfAlignment) {
  for (DWORD style : {DWORD{BS_CENTER}, DWORD{BS_RIGHT}}) {
    Make("Group", style);
    const CSize text = SizeOf("Group");
    const CRect gap = Gap(Look(), text.cy / 2);
    EXPECT_EQ(gap.left, (kWidth - text.cx) / 2);
    EXPECT_EQ(gap.Width(), text.cx);
    box.DestroyWindow();
  }
}

TEST_F(GroupBox, LeavesABlanksWidthOpenWithoutText) {
  Make("");
  const CSize blank = SizeOf(" ");
  const CRect gap = Gap(Look(), blank.cy / 2);
  EXPECT_EQ(gap.left, 6);
  EXPECT_EQ(gap.Width(), blank.cx);
}

TEST_F(GroupBox, HasAGreyTextWhenDisabledAndRepaintsByItself) {
  Make("Group");
  Look();
  box.EnableWindow(FALSE);
  EXPECT_TRUE(::GetUpdateRect(box.m_hWnd, nullptr, FALSE));
  const Picture picture = Look();
  EXPECT_GT(picture.Count(kDisabledText), 0);
  EXPECT_EQ(picture.Count(kText), 0);
}

TEST_F(GroupBox, ShowsNothingOfAnEarlierText) {
  Make("WWWWWW");
  Look();
  box.SetWindowText("");
  Pump();
  EXPECT_EQ(Picture::OfClient(box.m_hWnd).Count(kText), 0);
}
