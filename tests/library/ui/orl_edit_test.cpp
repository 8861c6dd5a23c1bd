// SPDX-License-Identifier: MIT
#include "library/ui/orl_edit.h"

#include "tests/library/ui/control_fixture.h"

namespace {

class Edit : public ControlFixture {
 protected:
  COrlEdit edit;
};

}  // namespace

TEST_F(Edit, HasAnEngravedFrameRoundTheWholeWindow) {
  const HWND window =
      ::CreateWindowExA(WS_EX_CLIENTEDGE, "Edit", "abc", WS_CHILD | WS_VISIBLE, 10, 10, 60, 20,
                        parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kId}), nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(edit.AttachEdit(kId, &parent));
  const Picture picture = Picture::OfWindow(window);
  for (LONG x = 0; x < 60; ++x) {
    EXPECT_EQ(picture.At(x, 0), Colour(0, 0, 0));
    EXPECT_EQ(picture.At(x, 19), Colour(0, 0, 0));
  }
  for (LONG y = 0; y < 20; ++y) {
    EXPECT_EQ(picture.At(0, y), Colour(0, 0, 0));
    EXPECT_EQ(picture.At(59, y), Colour(0, 0, 0));
  }
  for (LONG x = 2; x < 58; ++x) {
    EXPECT_EQ(picture.At(x, 1), Colour(64, 64, 64));
    EXPECT_EQ(picture.At(x, 18), Colour(118, 118, 118));
  }
  for (LONG y = 2; y < 18; ++y) {
    EXPECT_EQ(picture.At(1, y), Colour(64, 64, 64));
    EXPECT_EQ(picture.At(58, y), Colour(118, 118, 118));
  }
}

TEST_F(Edit, StillTakesText) {
  const HWND window = Add("Edit", "", 0, {10, 10, 70, 30});
  ASSERT_TRUE(edit.AttachEdit(kId, &parent));
  ::SendMessageA(window, WM_CHAR, 'x', 0);
  EXPECT_EQ(edit.GetWindowText(), "x");
}

TEST_F(Edit, IsNotAttachedToAControlThatIsMissing) {
  EXPECT_FALSE(edit.AttachEdit(kId, &parent));
  EXPECT_EQ(edit.m_hWnd, nullptr);
}
