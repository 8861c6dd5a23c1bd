// SPDX-License-Identifier: MIT
#include "library/ui/orl_slider.h"

#include <algorithm>
#include <string>

#include "tests/library/ui/control_fixture.h"

namespace {

const Colour kDark(34, 34, 34);
const Colour kBlack(0, 0, 0);
const Colour kTick(180, 180, 180);
const Colour kDisabledTick(107, 107, 107);
const Colour kSelection(51, 153, 255);
const Colour k118(118, 118, 118);
const Colour k64(64, 64, 64);
const Colour kPressedThumb(36, 36, 36);

// Every test that looks at places runs for a lying and for a standing slider; places are told as
// (along, across) the slider.
class Slider : public ControlFixture, public testing::WithParamInterface<bool> {
 protected:
  bool Vertical() const { return GetParam(); }

  void Make(DWORD style) {
    const DWORD direction = Vertical() ? TBS_VERT : TBS_HORZ;
    Add("msctls_trackbar32", "", TBS_AUTOTICKS | direction | style,
        Vertical() ? CRect(10, 10, 60, 160) : CRect(10, 10, 160, 60));
    ASSERT_TRUE(slider.AttachSlider(kId, &parent));
    slider.SetRange(0, 8, FALSE);
    slider.SetPos(2);
  }

  CRect Turned(const CRect& rect) const {
    return Vertical() ? CRect(rect.top, rect.left, rect.bottom, rect.right) : rect;
  }
  // Some systems tell the standing slider's channel as if it lay.
  CRect Channel() const {
    const CRect told = slider.GetChannelRect();
    return told.Width() < told.Height() ? CRect(told.top, told.left, told.bottom, told.right)
                                        : told;
  }
  CRect Thumb() const { return Turned(slider.GetThumbRect()); }

  class Look {
   public:
    explicit Look(const Slider& test)
        : vertical(test.Vertical()), picture(Picture::OfClient(test.slider.m_hWnd)) {}
    Colour At(LONG along, LONG across) const {
      return vertical ? picture.At(across, along) : picture.At(along, across);
    }
    int Count(Colour colour) const { return picture.Count(colour); }
    CRect Around(Colour colour) const {
      const CRect rect = picture.Around(colour);
      return vertical ? CRect(rect.top, rect.left, rect.bottom, rect.right) : rect;
    }
    CRect Rect() const {
      const CRect rect = picture.Rect();
      return vertical ? CRect(0, 0, rect.bottom, rect.right) : rect;
    }

   private:
    bool vertical;
    Picture picture;
  };

  // How many pixels of a colour lie across the slider at one place, above or below the thumb.
  static int TickLength(const Look& look, LONG along, LONG from, LONG to, Colour colour) {
    int length = 0;
    for (LONG across = from; across < to; ++across) {
      length += look.At(along, across) == colour ? 1 : 0;
    }
    return length;
  }

  void ExpectTicks(const Look& look, LONG from, LONG to, Colour colour) const {
    const CRect channel = Channel();
    const LONG distance = channel.right - 1 - channel.left;
    std::vector<LONG> places;
    for (int tick = 0; tick <= 8; ++tick) {
      places.push_back(channel.left + static_cast<LONG>(tick * (distance / 8.0)));
    }
    for (LONG along = 0; along < look.Rect().right; ++along) {
      const bool end = along == places.front() || along == places.back();
      const bool inner = std::find(places.begin(), places.end(), along) != places.end();
      EXPECT_EQ(TickLength(look, along, from, to, colour), end ? 6 : inner ? 3 : 0) << along;
    }
  }

  COrlSlider slider;
};

INSTANTIATE_TEST_SUITE_P(Directions, Slider, testing::Bool(), [](const auto& info) {
  return info.param ? std::string("Vertical") : std::string("Horizontal");
});

}  // namespace

TEST_P(Slider, LiesOnAPlainGround) {
  Make(TBS_NOTICKS);
  const Look look(*this);
  EXPECT_EQ(look.At(0, 0), kDark);
  EXPECT_EQ(look.At(look.Rect().right - 1, look.Rect().bottom - 1), kDark);
}

TEST_P(Slider, HasAnEngravedChannel) {
  Make(TBS_NOTICKS);
  const Look look(*this);
  const CRect channel = Channel();
  const LONG middle = (channel.top + channel.bottom) / 2;
  // A standing slider mirrors a lying one, its frame is lit from the same side all the same.
  EXPECT_EQ(look.At(channel.left, middle), k64);
  EXPECT_EQ(look.At(channel.right - 1, middle), k118);
  const LONG free = channel.right - 10;  // away from the thumb
  EXPECT_EQ(look.At(free, channel.top), k64);
  EXPECT_EQ(look.At(free, channel.bottom - 1), k118);
  EXPECT_EQ(look.At(free, channel.top + 1), kDark);
  EXPECT_EQ(look.At(free, channel.top - 1), kDark);
  EXPECT_EQ(look.At(free, channel.bottom), kDark);
}

TEST_P(Slider, HasADeeperChannelBetweenTwoRowsOfTicks) {
  Make(TBS_BOTH);
  const Look look(*this);
  const CRect channel = Channel();
  const LONG free = channel.right - 5;
  EXPECT_EQ(look.At(free, channel.top), kBlack);
  EXPECT_EQ(look.At(free, channel.top + 1), k118);
  EXPECT_EQ(look.At(free, channel.bottom - 2), k64);
  EXPECT_EQ(look.At(free, channel.bottom - 1), kBlack);
}

TEST_P(Slider, HasItsTicksBelowWhereNothingElseIsAskedFor) {
  Make(0);
  const Look look(*this);
  ExpectTicks(look, Thumb().bottom, look.Rect().bottom, kTick);
  ExpectTicks(look, 0, look.Rect().bottom, kTick);
}

TEST_P(Slider, HasItsTicksAboveWithThatStyle) {
  Make(TBS_TOP);
  const Look look(*this);
  ExpectTicks(look, 0, Thumb().top, kTick);
  ExpectTicks(look, 0, look.Rect().bottom, kTick);
}

TEST_P(Slider, HasTicksOnBothSidesWithThatStyle) {
  for (DWORD style : {DWORD{TBS_BOTH}, DWORD{TBS_BOTH | TBS_TOP}}) {
    Make(style);
    const Look look(*this);
    ExpectTicks(look, 0, Thumb().top, kTick);
    ExpectTicks(look, Thumb().bottom, look.Rect().bottom, kTick);
    slider.DestroyWindow();
  }
}

TEST_P(Slider, HasNoTicksWithThatStyle) {
  Make(TBS_NOTICKS);
  EXPECT_EQ(Look(*this).Count(kTick), 0);
}

TEST_P(Slider, HasGreyTicksWhenDisabled) {
  Make(0);
  slider.EnableWindow(FALSE);
  const Look look(*this);
  ExpectTicks(look, 0, look.Rect().bottom, kDisabledTick);
  EXPECT_EQ(look.Count(kTick), 0);
}

TEST_P(Slider, HasAFlatThumbAtRest) {
  Make(TBS_NOTICKS);
  const Look look(*this);
  const CRect thumb = Thumb();
  for (LONG across = thumb.top; across < thumb.bottom; ++across) {
    EXPECT_EQ(look.At(thumb.left, across), kBlack);
    EXPECT_EQ(look.At(thumb.right - 1, across), kBlack);
  }
  for (LONG along = thumb.left; along < thumb.right; ++along) {
    EXPECT_EQ(look.At(along, thumb.top), kBlack);
    EXPECT_EQ(look.At(along, thumb.bottom - 1), kBlack);
  }
  for (LONG along = thumb.left + 1; along < thumb.right - 1; ++along) {
    for (LONG across = thumb.top + 1; across < thumb.bottom - 1; ++across) {
      EXPECT_EQ(look.At(along, across), kDark) << along << ", " << across;
    }
  }
}

TEST_P(Slider, HasALitThumbWhileItIsPressed) {
  Make(TBS_NOTICKS);
  const CRect place = slider.GetThumbRect();
  const CPoint inside((place.left + place.right) / 2, (place.top + place.bottom) / 2);
  Press(slider.m_hWnd, inside);
  {
    const Look look(*this);
    const CRect thumb = Thumb();
    EXPECT_EQ(look.At(thumb.left, thumb.top), kBlack);
    EXPECT_EQ(look.At(thumb.right - 1, thumb.bottom - 1), kBlack);
    EXPECT_EQ(look.At(thumb.left + 1, thumb.top + 1), k118);
    EXPECT_EQ(look.At(thumb.right - 2, thumb.bottom - 2), k118);
    EXPECT_EQ(look.At(thumb.left + 2, thumb.top + 2), kPressedThumb);
    EXPECT_EQ(look.Count(kPressedThumb), (thumb.Width() - 4) * (thumb.Height() - 4));
  }
  Release(slider.m_hWnd, inside);
  EXPECT_EQ(Look(*this).Count(kPressedThumb), 0);
}

// The release then comes to somebody else.
TEST_P(Slider, LetsGoOfItsThumbWhenTheMouseIsTakenAway) {
  Make(TBS_NOTICKS);
  Press(slider.m_hWnd, slider.GetThumbRect().TopLeft());
  ASSERT_EQ(::GetCapture(), slider.m_hWnd);
  EXPECT_GT(Look(*this).Count(kPressedThumb), 0);
  ::UpdateWindow(slider.m_hWnd);
  ::SetCapture(parent.m_hWnd);
  EXPECT_TRUE(::GetUpdateRect(slider.m_hWnd, nullptr, FALSE));
  EXPECT_EQ(Look(*this).Count(kPressedThumb), 0);
  ::ReleaseCapture();
}

TEST_P(Slider, KeepsItsThumbAtRestWhenThePressIsBesideIt) {
  Make(TBS_NOTICKS);
  const CRect client = slider.GetClientRect();
  Press(slider.m_hWnd, {client.right - 2, client.bottom - 2});
  EXPECT_EQ(Look(*this).Count(kPressedThumb), 0);
  Release(slider.m_hWnd, {client.right - 2, client.bottom - 2});
}

TEST_P(Slider, AsksForPaintWhenItsThumbIsPressedAndReleased) {
  Make(TBS_NOTICKS);
  const CRect thumb = slider.GetThumbRect();
  ::UpdateWindow(slider.m_hWnd);
  ASSERT_FALSE(::GetUpdateRect(slider.m_hWnd, nullptr, FALSE));
  Press(slider.m_hWnd, thumb.TopLeft());
  EXPECT_TRUE(::GetUpdateRect(slider.m_hWnd, nullptr, FALSE));
  ::UpdateWindow(slider.m_hWnd);
  Release(slider.m_hWnd, thumb.TopLeft());
  EXPECT_TRUE(::GetUpdateRect(slider.m_hWnd, nullptr, FALSE));
}

TEST_P(Slider, ShowsItsSelectionInTheChannel) {
  Make(TBS_NOTICKS | TBS_ENABLESELRANGE);
  slider.SetPos(0);
  slider.SendMessage(TBM_SETSEL, TRUE, MAKELPARAM(4, 6));
  const Look look(*this);
  CRect inside = Channel();
  inside.DeflateRect(1, 1);
  const CRect expected(inside.left + inside.Width() * 4 / 8, inside.top,
                       inside.left + inside.Width() * 6 / 8, inside.bottom);
  const CRect shown = look.Around(kSelection);
  EXPECT_NEAR(shown.left, expected.left, 1);
  EXPECT_NEAR(shown.right, expected.right, 1);
  EXPECT_EQ(shown.top, expected.top);
  EXPECT_EQ(shown.bottom, expected.bottom);
  EXPECT_EQ(look.Count(kSelection), shown.Width() * shown.Height());
}

TEST_P(Slider, ShowsNoSelectionThatIsEmptyOrNotAskedFor) {
  Make(TBS_NOTICKS | TBS_ENABLESELRANGE);
  EXPECT_EQ(Look(*this).Count(kSelection), 0);
  slider.SendMessage(TBM_SETSEL, TRUE, MAKELPARAM(4, 6));
  EXPECT_GT(Look(*this).Count(kSelection), 0);
  slider.ModifyStyle(TBS_ENABLESELRANGE, 0);
  EXPECT_EQ(Look(*this).Count(kSelection), 0);
}

TEST_P(Slider, ShowsTheFocusByARectangleUnlessToldNotTo) {
  Make(TBS_NOTICKS);
  const auto dots = [&] {
    const Look look(*this);
    int count = 0;
    for (LONG along = 0; along < look.Rect().right; ++along) {
      count += look.At(along, 0) != kDark ? 1 : 0;
    }
    return count;
  };
  ::SetFocus(parent.m_hWnd);
  EXPECT_EQ(dots(), 0);
  ::SetFocus(slider.m_hWnd);
  EXPECT_NEAR(dots(), Look(*this).Rect().right / 2, 2);
  slider.ShowFocusRect(false);
  EXPECT_EQ(dots(), 0);
}

TEST_P(Slider, DoesNotEraseItsGround) {
  Make(0);
  Picture picture(20, 20);
  const auto dc = reinterpret_cast<WPARAM>(picture.Dc().GetSafeHdc());
  EXPECT_TRUE(slider.SendMessage(WM_ERASEBKGND, dc));
  EXPECT_EQ(picture.Count(kUntouched), 20 * 20);
}

TEST_P(Slider, StillMovesLikeTheSystems) {
  Make(0);
  slider.SendMessage(WM_KEYDOWN, VK_RIGHT);
  EXPECT_EQ(slider.GetPos(), 3);
  slider.SendMessage(WM_KEYDOWN, VK_END);
  EXPECT_EQ(slider.GetPos(), 8);
}

TEST_P(Slider, IsNotAttachedToAControlThatIsMissing) {
  COrlSlider other;
  EXPECT_FALSE(other.AttachSlider(kId + 1, &parent));
  EXPECT_EQ(other.m_hWnd, nullptr);
}
