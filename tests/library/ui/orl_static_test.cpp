// SPDX-License-Identifier: MIT
#include "library/ui/orl_static.h"

#include "tests/library/ui/control_fixture.h"

namespace {

const Colour kText(180, 180, 180);
const Colour kDisabledText(107, 107, 107);
const Colour kShadow(20, 20, 20);
const Colour kDark(34, 34, 34);
constexpr int kWidth = 120;
constexpr int kHeight = 40;

class Static : public ControlFixture {
 protected:
  void Make(DWORD style, const char* text = "Static") {
    Add("Static", text, style, {10, 10, 10 + kWidth, 10 + kHeight});
    ASSERT_TRUE(label.AttachStatic(kId, &parent));
    Expose();
  }
  void Expose() const {
    ::RedrawWindow(parent.m_hWnd, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  }
  Picture Look() const { return Picture::OfClient(label.m_hWnd); }

  COrlStatic label;
};

}  // namespace

TEST_F(Static, HasLightTextOnAPlainGround) {
  Make(SS_LEFT);
  const Picture picture = Look();
  EXPECT_GT(picture.Count(kText), 0);
  EXPECT_EQ(picture.Count(kText) + picture.Count(kDark), kWidth * kHeight);
}

TEST_F(Static, HasAnEngravedTextWhenDisabled) {
  Make(SS_LEFT);
  const Picture enabled = Look();
  label.EnableWindow(FALSE);
  EXPECT_TRUE(::GetUpdateRect(label.m_hWnd, nullptr, FALSE));
  const Picture picture = Look();
  int shadows = 0;
  for (LONG y = 0; y + 1 < kHeight; ++y) {
    for (LONG x = 0; x + 1 < kWidth; ++x) {
      if (enabled.At(x, y) != kText) continue;
      EXPECT_EQ(picture.At(x, y), kDisabledText);
      if (enabled.At(x + 1, y + 1) == kText) continue;
      EXPECT_EQ(picture.At(x + 1, y + 1), kShadow);
      ++shadows;
    }
  }
  EXPECT_GT(shadows, 0);
  EXPECT_EQ(picture.Count(kShadow), shadows);
}

TEST_F(Static, PlacesItsTextAsItsStyleSays) {
  const auto place = [&](DWORD style) {
    Make(style);
    const CRect text = Look().Around(kText);
    label.DestroyWindow();
    return text;
  };
  const CRect left = place(SS_LEFT);
  EXPECT_LE(left.left, 2);
  EXPECT_LE(left.top, 4);
  const CRect centre = place(SS_CENTER);
  EXPECT_NEAR(centre.left, kWidth - centre.right, 2);
  EXPECT_EQ(centre.top, left.top);
  const CRect right = place(SS_RIGHT);
  EXPECT_GE(right.right, kWidth - 2);
  const CRect middle = place(SS_LEFT | SS_CENTERIMAGE);
  EXPECT_EQ(middle.left, left.left);
  EXPECT_NEAR(middle.top, kHeight - middle.bottom, 4);
  EXPECT_GT(middle.top, left.top);
}

TEST_F(Static, BreaksLinesUnlessItIsCentredUpAndDown) {
  const char* const words = "several words that need more than one line";
  const auto height = [&](DWORD style) {
    Make(style, words);
    const LONG found = Look().Around(kText).Height();
    label.DestroyWindow();
    return found;
  };
  EXPECT_GT(height(SS_LEFT), 20);
  EXPECT_LT(height(SS_LEFT | SS_CENTERIMAGE), 16);
}

TEST_F(Static, UnderlinesItsTextWhenAskedTo) {
  Make(SS_LEFT, "mmmm");
  const auto widestRow = [&] {
    const Picture picture = Look();
    int widest = 0;
    for (LONG y = 0; y < kHeight; ++y) {
      widest = std::max(widest, picture.Count(kText, CRect(0, y, kWidth, y + 1)));
    }
    return widest;
  };
  const LONG width = Look().Around(kText).Width();
  EXPECT_LT(widestRow(), width);
  label.SetUnderline(true);
  EXPECT_GE(widestRow(), width);
  label.SetUnderline(false);
  EXPECT_LT(widestRow(), width);
}

TEST_F(Static, ContinuesTheGroundBesideItWhenAskedTo) {
  parent.ground = [](int y) { return Colour(2 * y, 100 - y, 50 + y); };
  Make(SS_LEFT, "");
  label.SetGradientGround(true);
  const Picture picture = Look();
  for (LONG y = 0; y < kHeight; ++y) {
    EXPECT_EQ(picture.At(60, y), parent.ground(static_cast<int>(10 + y))) << y;
  }
  label.SetPlainGround(true);
  EXPECT_EQ(Look().Count(kDark), kWidth * kHeight);
  label.SetPlainGround(false);
  EXPECT_EQ(Look().Count(kDark), 0);
  label.SetGradientGround(false);
  EXPECT_EQ(Look().Count(kDark), kWidth * kHeight);
}

TEST_F(Static, ErasesToItsGround) {
  Make(SS_LEFT);
  Picture picture(kWidth, kHeight);
  const auto dc = reinterpret_cast<WPARAM>(picture.Dc().GetSafeHdc());
  EXPECT_TRUE(label.SendMessage(WM_ERASEBKGND, dc));
  EXPECT_EQ(picture.Count(kDark), kWidth * kHeight);
}

TEST_F(Static, HasAnEngravedFrameInPlaceOfItsBorder) {
  const HWND window =
      ::CreateWindowExA(WS_EX_CLIENTEDGE, "Static", "", WS_CHILD | WS_VISIBLE, 10, 10, 60, 20,
                        parent.m_hWnd, reinterpret_cast<HMENU>(UINT_PTR{kId}), nullptr, nullptr);
  ASSERT_TRUE(label.AttachStatic(kId, &parent));
  const Picture picture = Picture::OfWindow(window);
  for (LONG x = 1; x < 59; ++x) {
    EXPECT_EQ(picture.At(x, 0), Colour(64, 64, 64));
    EXPECT_EQ(picture.At(x, 19), Colour(118, 118, 118));
  }
  for (LONG y = 1; y < 19; ++y) {
    EXPECT_EQ(picture.At(0, y), Colour(64, 64, 64));
    EXPECT_EQ(picture.At(59, y), Colour(118, 118, 118));
  }
  EXPECT_EQ(picture.Count(kDark), 58 * 18);
}

TEST_F(Static, ShowsANewTextInItsOwnLook) {
  Make(SS_LEFT);
  Look();
  label.SetWindowText("Another");
  EXPECT_TRUE(::GetUpdateRect(label.m_hWnd, nullptr, FALSE));
  const Picture picture = Look();
  EXPECT_EQ(picture.Count(kText) + picture.Count(kDark), kWidth * kHeight);
}
