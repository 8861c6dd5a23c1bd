// SPDX-License-Identifier: MIT
#include "library/ui/orl_dialog_base.h"

#include "tests/library/ui/control_fixture.h"

namespace {

using Direction = COrlDialogBase::GradientDirection;

constexpr RECT kArea = {3, 4, 13, 12};  // 10 wide, 8 high

std::vector<Colour> Column(const Picture& picture, LONG x, LONG first, LONG last) {
  std::vector<Colour> colours;
  for (LONG y = first; y <= last; ++y) colours.push_back(picture.At(x, y));
  return colours;
}

std::vector<Colour> Row(const Picture& picture, LONG y, LONG first, LONG last) {
  std::vector<Colour> colours;
  for (LONG x = first; x <= last; ++x) colours.push_back(picture.At(x, y));
  return colours;
}

std::vector<Colour> Greys(std::initializer_list<int> values) {
  std::vector<Colour> colours;
  for (int value : values) colours.emplace_back(value, value, value);
  return colours;
}

}  // namespace

TEST(Gradient, RunsFromTheBottomToTheTopAndBeginsOneLineBelow) {
  Picture picture(20, 20);
  COrlDialogBase::PaintGradient(picture.Dc(), kArea, RGB(0, 0, 0), RGB(80, 80, 80),
                                Direction::kVertical);
  EXPECT_EQ(Column(picture, 5, 4, 12), Greys({80, 70, 60, 50, 40, 30, 20, 10, 0}));
  EXPECT_EQ(picture.At(5, 3), kUntouched);
  EXPECT_EQ(picture.At(5, 13), kUntouched);
  EXPECT_EQ(picture.Count(kUntouched), 20 * 20 - 10 * 9);
}

TEST(Gradient, RunsFromTheLeftToTheRightAndEndsOneColumnBeyond) {
  Picture picture(20, 20);
  COrlDialogBase::PaintGradient(picture.Dc(), kArea, RGB(0, 0, 0), RGB(100, 100, 100),
                                Direction::kHorizontal);
  EXPECT_EQ(Row(picture, 6, 3, 13), Greys({0, 10, 20, 30, 40, 50, 60, 70, 80, 90, 100}));
  EXPECT_EQ(picture.At(2, 6), kUntouched);
  EXPECT_EQ(picture.At(14, 6), kUntouched);
  EXPECT_EQ(picture.Count(kUntouched), 20 * 20 - 11 * 8);
}

TEST(Gradient, CutsFractionsTowardsTheFirstColour) {
  Picture picture(20, 20);
  const CRect area(2, 2, 6, 6);
  COrlDialogBase::PaintGradient(picture.Dc(), area, RGB(100, 100, 100), RGB(97, 97, 97),
                                Direction::kHorizontal);
  EXPECT_EQ(Row(picture, 3, 2, 6), Greys({100, 100, 99, 98, 97}));
  COrlDialogBase::PaintGradient(picture.Dc(), area, RGB(97, 97, 97), RGB(100, 100, 100),
                                Direction::kHorizontal);
  EXPECT_EQ(Row(picture, 3, 2, 6), Greys({97, 97, 98, 99, 100}));
}

TEST(Gradient, TreatsEachChannelByItself) {
  Picture picture(20, 20);
  COrlDialogBase::PaintGradient(picture.Dc(), CRect(0, 0, 2, 5), RGB(10, 200, 0), RGB(60, 100, 255),
                                Direction::kHorizontal);
  EXPECT_EQ(picture.At(0, 0), Colour(10, 200, 0));
  EXPECT_EQ(picture.At(1, 0), Colour(35, 150, 127));
  EXPECT_EQ(picture.At(2, 0), Colour(60, 100, 255));
}

struct BevelCase {
  int style;
  Colour outerBottomRight;
  Colour innerBottomRight;
  Colour outerTopLeft;
  Colour innerTopLeft;
};

class Bevel : public testing::TestWithParam<BevelCase> {
 protected:
  static void ExpectCorners(const Picture& picture, const CRect& ring, const Colour& topLeft,
                            const Colour& bottomRight) {
    EXPECT_EQ(picture.At(ring.left, ring.top), topLeft);
    EXPECT_EQ(picture.At(ring.right - 1, ring.top), topLeft);
    EXPECT_EQ(picture.At(ring.left, ring.bottom - 1), topLeft);
    EXPECT_EQ(picture.At(ring.right - 1, ring.bottom - 1), bottomRight);
  }
};

TEST_P(Bevel, HasItsRings) {
  const BevelCase& expected = GetParam();
  Picture picture(20, 20);
  COrlDialogBase::PaintBevel(picture.Dc(), kArea, expected.style);
  const LONG right = kArea.right - 1;
  const LONG bottom = kArea.bottom - 1;
  for (LONG x = kArea.left + 1; x < right; ++x) {
    EXPECT_EQ(picture.At(x, kArea.top), expected.outerTopLeft) << x;
    EXPECT_EQ(picture.At(x, bottom), expected.outerBottomRight) << x;
  }
  for (LONG y = kArea.top + 1; y < bottom; ++y) {
    EXPECT_EQ(picture.At(kArea.left, y), expected.outerTopLeft) << y;
    EXPECT_EQ(picture.At(right, y), expected.outerBottomRight) << y;
  }
  for (LONG x = kArea.left + 2; x < right - 1; ++x) {
    EXPECT_EQ(picture.At(x, kArea.top + 1), expected.innerTopLeft) << x;
    EXPECT_EQ(picture.At(x, bottom - 1), expected.innerBottomRight) << x;
  }
  for (LONG y = kArea.top + 2; y < bottom - 1; ++y) {
    EXPECT_EQ(picture.At(kArea.left + 1, y), expected.innerTopLeft) << y;
    EXPECT_EQ(picture.At(right - 1, y), expected.innerBottomRight) << y;
  }
}

TEST_P(Bevel, ClosesItsCornersAndPaintsNothingElse) {
  Picture picture(20, 20);
  COrlDialogBase::PaintBevel(picture.Dc(), kArea, GetParam().style);
  const bool oneRing = GetParam().innerTopLeft == kUntouched;
  const int outer = 2 * 10 + 2 * 8 - 4;
  const int inner = 2 * 8 + 2 * 6 - 4;
  EXPECT_EQ(picture.Count(kUntouched), 20 * 20 - outer - (oneRing ? 0 : inner));
  // The upper left line is drawn last and reaches both of the other corners.
  CRect ring = kArea;
  ExpectCorners(picture, ring, GetParam().outerTopLeft, GetParam().outerBottomRight);
  ring.DeflateRect(1, 1);
  ExpectCorners(picture, ring, GetParam().innerTopLeft, GetParam().innerBottomRight);
}

const Colour kBlack(0, 0, 0);
const Colour k64(64, 64, 64);
const Colour k118(118, 118, 118);

INSTANTIATE_TEST_SUITE_P(
    Styles, Bevel,
    testing::Values(
        BevelCase{2, kBlack, k118, kBlack, k64}, BevelCase{3, kBlack, k118, kBlack, k64},
        BevelCase{4, kBlack, kUntouched, kBlack, kUntouched},
        BevelCase{5, k118, kUntouched, k64, kUntouched}, BevelCase{6, kBlack, k118, kBlack, k64},
        BevelCase{7, kBlack, k118, kBlack, k118}, BevelCase{8, kBlack, k118, kBlack, k118},
        BevelCase{9, kBlack, k64, kBlack, k118},
        BevelCase{1, kBlack, Colour(84, 84, 84), Colour(222, 222, 222), Colour(207, 207, 207)},
        BevelCase{10, kBlack, Colour(84, 84, 84), Colour(222, 222, 222), Colour(207, 207, 207)}),
    [](const auto& info) { return "Style" + std::to_string(info.param.style); });

TEST(PlainGround, IsDarkGrey) {
  Picture picture(20, 20);
  COrlDialogBase::PaintPlain(picture.Dc(), kArea);
  EXPECT_EQ(picture.Count(Colour(34, 34, 34)), 10 * 8);
  EXPECT_EQ(picture.Around(Colour(34, 34, 34)), CRect(kArea));
}

namespace {

struct ColourCase {
  const char* name;
  UINT kind;
  DWORD editStyle;
  int mode;
  Colour background;  // kUntouched: whatever was set before
  Colour brush;       // kUntouched: hollow
};

class ControlColours : public ControlFixture, public testing::WithParamInterface<ColourCase> {
 protected:
  static Colour ColourOf(HBRUSH brush) {
    LOGBRUSH description = {};
    EXPECT_NE(::GetObjectA(brush, sizeof description, &description), 0);
    return description.lbStyle == BS_HOLLOW ? kUntouched : Colour(description.lbColor);
  }
};

}  // namespace

TEST_P(ControlColours, AreThoseOfTheKind) {
  const ColourCase& expected = GetParam();
  const HWND control = Add("Edit", "", expected.editStyle, {0, 0, 40, 20});
  Picture picture(4, 4);
  CDC& dc = picture.Dc();
  dc.SetBkColor(kUntouched.value);
  dc.SetTextColor(kUntouched.value);
  dc.SetBkMode(expected.mode == OPAQUE ? TRANSPARENT : OPAQUE);

  const HBRUSH brush = COrlDialogBase().ControlColour(dc, control, expected.kind);

  EXPECT_EQ(ColourOf(brush), expected.brush);
  EXPECT_EQ(Colour(::GetTextColor(dc.GetSafeHdc())), Colour(180, 180, 180));
  EXPECT_EQ(::GetBkMode(dc.GetSafeHdc()), expected.mode);
  EXPECT_EQ(Colour(::GetBkColor(dc.GetSafeHdc())), expected.background);
}

const Colour kDark(34, 34, 34);

INSTANTIATE_TEST_SUITE_P(
    Kinds, ControlColours,
    testing::Values(ColourCase{"MessageArea", CTLCOLOR_MSGBOX, 0, TRANSPARENT, kUntouched, kBlack},
                    ColourCase{"Edit", CTLCOLOR_EDIT, ES_LEFT, OPAQUE, kBlack, kBlack},
                    ColourCase{"CentredEdit", CTLCOLOR_EDIT, ES_CENTER, OPAQUE, kBlack, kBlack},
                    ColourCase{"RightEdit", CTLCOLOR_EDIT, ES_RIGHT, OPAQUE, kBlack, kBlack},
                    ColourCase{"EditWithBothBits", CTLCOLOR_EDIT, 3, OPAQUE, kDark, kDark},
                    ColourCase{"ListBox", CTLCOLOR_LISTBOX, 0, OPAQUE, kDark, kDark},
                    ColourCase{"Button", CTLCOLOR_BTN, 0, TRANSPARENT, kUntouched, kUntouched},
                    ColourCase{"Dialog", CTLCOLOR_DLG, 0, TRANSPARENT, kDark, kDark},
                    ColourCase{"ScrollBar", CTLCOLOR_SCROLLBAR, 0, TRANSPARENT, kDark, kDark},
                    ColourCase{"Static", CTLCOLOR_STATIC, 0, OPAQUE, kDark, kDark}),
    [](const auto& info) { return info.param.name; });

TEST(SharedBrushes, AreTheSameForEveryDialogAndGoneAfterwards) {
  CreateSharedBrushes();
  Picture picture(4, 4);
  const HBRUSH first = COrlDialogBase().ControlColour(picture.Dc(), nullptr, CTLCOLOR_DLG);
  const HBRUSH second = COrlDialogBase().ControlColour(picture.Dc(), nullptr, CTLCOLOR_STATIC);
  EXPECT_EQ(first, second);
  EXPECT_EQ(::GetObjectType(first), static_cast<DWORD>(OBJ_BRUSH));
  DeleteSharedBrushes();
  EXPECT_EQ(::GetObjectType(first), 0u);
  EXPECT_EQ(GetSharedBrushes().dark, nullptr);
  EXPECT_EQ(GetSharedBrushes().black, nullptr);
}

// At the end of a process the hand controller may still be open when the brushes go.
TEST(SharedBrushes, MayGoBeforeADialogThatUsesThem) {
  CreateSharedBrushes();
  Picture picture(4, 4);
  const COrlDialogBase dialog;
  DeleteSharedBrushes();
  const HGDIOBJ black = ::GetStockObject(BLACK_BRUSH);
  EXPECT_EQ(dialog.ControlColour(picture.Dc(), nullptr, CTLCOLOR_DLG), black);
  EXPECT_EQ(dialog.ControlColour(picture.Dc(), nullptr, CTLCOLOR_MSGBOX), black);
  CreateSharedBrushes();
  const HBRUSH dark = *GetSharedBrushes().dark;
  EXPECT_EQ(dialog.ControlColour(picture.Dc(), nullptr, CTLCOLOR_DLG), dark);
  DeleteSharedBrushes();
}
