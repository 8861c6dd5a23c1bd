// SPDX-License-Identifier: MIT
#include "library/ui/orl_spin_button.h"

#include "res/resource_ids.h"
#include "tests/library/ui/control_fixture.h"

namespace {

const Colour kBlack(0, 0, 0);

class SpinButton : public ControlFixture {
 protected:
  static constexpr int kCellWidth = 17;
  static constexpr int kCellHeight = 11;

  SpinButton() : cells(34, 33) {
    CBitmap bitmap;
    EXPECT_TRUE(bitmap.LoadBitmap(IDB_SPIN_ARROWS));
    EXPECT_EQ(bitmap.GetBitmapSize().cx, 34);
    EXPECT_EQ(bitmap.GetBitmapSize().cy, 33);
    CMemoryDC source(cells.Dc());
    const CSelectedObject selected(source, bitmap.GetSafeHandle());
    cells.Dc().BitBlt(0, 0, 34, 33, source, 0, 0);
  }

  void Make(DWORD style, const CRect& place) {
    Add("msctls_updown32", "", style, place);
    ASSERT_TRUE(spin.AttachSpinButton(kId, &parent));
    spin.MoveWindow(place);  // the system makes a new one as narrow as it likes
    spin.SendMessage(UDM_SETRANGE, 0, MAKELPARAM(100, 0));
    spin.SendMessage(UDM_SETPOS, 0, 50);
  }
  void MakeStanding() { Make(0, {10, 10, 35, 50}); }      // halves of 25 by 20
  void MakeLying() { Make(UDS_HORZ, {10, 10, 60, 35}); }  // halves of 25 by 25

  Colour Cell(int arrow, int row, LONG x, LONG y) const {
    return cells.At(arrow * kCellWidth + x, row * kCellHeight + y);
  }

  // Expects an arrow of a standing control to be a copy of its cell in the middle of its half.
  void ExpectArrow(int arrow, int row) const {
    const Picture picture = Picture::OfClient(spin.m_hWnd);
    const LONG left = (25 - kCellWidth) / 2;
    const LONG top = arrow * 20 + (20 - kCellHeight) / 2;
    for (LONG y = 0; y < kCellHeight; ++y) {
      for (LONG x = 0; x < kCellWidth; ++x) {
        ASSERT_EQ(picture.At(left + x, top + y), Cell(arrow, row, x, y)) << x << "," << y;
      }
    }
    EXPECT_EQ(picture.At(1, arrow * 20 + 1), Cell(arrow, row, 0, 0));
    EXPECT_EQ(picture.At(0, arrow * 20), kBlack);
    EXPECT_EQ(picture.At(24, arrow * 20 + 19), kBlack);
  }

  Picture cells;
  COrlSpinButton spin;
  static constexpr POINT kUp = {12, 5};
  static constexpr POINT kDown = {12, 30};
  static constexpr POINT kOutside = {100, 100};
};

}  // namespace

TEST_F(SpinButton, CopiesItsArrowsFromTheBitmap) {
  MakeStanding();
  ExpectArrow(0, 0);
  ExpectArrow(1, 0);
}

TEST_F(SpinButton, TurnsItsArrowsWhenItLies) {
  MakeLying();
  const Picture picture = Picture::OfClient(spin.m_hWnd);
  for (int arrow = 0; arrow < 2; ++arrow) {
    for (LONG y = 0; y < kCellHeight; ++y) {
      for (LONG x = 0; x < kCellWidth; ++x) {
        const LONG left = arrow * 25 + (25 - kCellHeight) / 2;
        const LONG top = (25 - kCellWidth) / 2;
        ASSERT_EQ(picture.At(left + y, top + x), Cell(arrow, 0, x, y)) << x << "," << y;
      }
    }
  }
}

TEST_F(SpinButton, ShowsWhichArrowIsPressed) {
  MakeStanding();
  Press(spin.m_hWnd, kUp);
  ExpectArrow(0, 1);
  ExpectArrow(1, 0);
  Release(spin.m_hWnd, kUp);
  ExpectArrow(0, 0);
  Press(spin.m_hWnd, kDown);
  ExpectArrow(0, 0);
  ExpectArrow(1, 1);
  Release(spin.m_hWnd, kDown);
  ExpectArrow(1, 0);
}

TEST_F(SpinButton, ShowsNoPressedArrowWhileThePointerIsElsewhere) {
  MakeStanding();
  Press(spin.m_hWnd, kUp);
  MoveTo(spin.m_hWnd, kOutside);
  ExpectArrow(0, 0);
  MoveTo(spin.m_hWnd, kDown);
  ExpectArrow(0, 0);
  ExpectArrow(1, 0);
  MoveTo(spin.m_hWnd, kUp);
  ExpectArrow(0, 1);
  Release(spin.m_hWnd, kUp);
}

TEST_F(SpinButton, DoesNotShowAPressThatDidNotBeginOnIt) {
  MakeStanding();
  MoveTo(spin.m_hWnd, kUp);
  ExpectArrow(0, 0);
}

TEST_F(SpinButton, LetsGoWhenTheSystemCancels) {
  MakeStanding();
  Press(spin.m_hWnd, kDown);
  spin.SendMessage(WM_CANCELMODE);
  ExpectArrow(1, 0);
  MoveTo(spin.m_hWnd, kDown);
  ExpectArrow(1, 0);
}

// The release then comes to somebody else.
TEST_F(SpinButton, LetsGoWhenTheMouseIsTakenAway) {
  MakeStanding();
  Press(spin.m_hWnd, kUp);
  ASSERT_EQ(::GetCapture(), spin.m_hWnd);
  ::SetCapture(parent.m_hWnd);
  ExpectArrow(0, 0);
  MoveTo(spin.m_hWnd, kUp);
  ExpectArrow(0, 0);
  ::ReleaseCapture();
}

TEST_F(SpinButton, AsksForPaintWhenTheShownArrowChanges) {
  MakeStanding();
  Press(spin.m_hWnd, kUp);
  ::UpdateWindow(spin.m_hWnd);
  spin.SendMessage(WM_CANCELMODE);
  EXPECT_TRUE(::GetUpdateRect(spin.m_hWnd, nullptr, FALSE));
}

TEST_F(SpinButton, HasGreyArrowsWhenDisabled) {
  MakeStanding();
  spin.EnableWindow(FALSE);
  ExpectArrow(0, 2);
  ExpectArrow(1, 2);
}

TEST_F(SpinButton, CutsItsArrowsEvenlyInASmallControl) {
  Make(0, {10, 10, 21, 26});  // halves of 11 by 8
  const Picture picture = Picture::OfClient(spin.m_hWnd);
  for (LONG y = 1; y < 7; ++y) {
    for (LONG x = 1; x < 10; ++x) {
      ASSERT_EQ(picture.At(x, y), Cell(0, 0, x + 3, y + 1)) << x << "," << y;
    }
  }
}

TEST_F(SpinButton, CountsOneUpOrDownAPress) {
  MakeStanding();
  const auto press = [&](CPoint arrow) {
    Press(spin.m_hWnd, arrow);
    Release(spin.m_hWnd, arrow);
    return LOWORD(spin.SendMessage(UDM_GETPOS));
  };
  EXPECT_EQ(press(kUp), 51);
  EXPECT_EQ(press(kUp), 52);
  EXPECT_EQ(press(kDown), 51);
}
