// SPDX-License-Identifier: MIT
#include "library/ui/orl_radio_button.h"

#include "res/resource_ids.h"
#include "tests/library/ui/control_fixture.h"

namespace {

const Colour kText(180, 180, 180);
const Colour kDisabledText(107, 107, 107);
const Colour kShadow(20, 20, 20);
const Colour kDark(34, 34, 34);
constexpr int kHeight = 20;

class RadioButton : public ControlFixture {
 protected:
  void SetUp() override {
    Add("Button", "Radio", BS_AUTORADIOBUTTON | WS_GROUP, {10, 10, 110, 10 + kHeight});
    ASSERT_TRUE(radio.AttachRadioButton(kId, &parent));
    ::SetFocus(parent.m_hWnd);
    ::RedrawWindow(parent.m_hWnd, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  }
  Picture Look() const { return Picture::OfClient(radio.m_hWnd); }

  // Expects that the box is a copy of a cell of the library's bitmap.
  void ExpectCell(int column, int row) const {
    CBitmap cells;
    ASSERT_TRUE(cells.LoadBitmap(IDB_RADIO_BOXES));
    ASSERT_EQ(cells.GetBitmapSize().cx, 26);
    ASSERT_EQ(cells.GetBitmapSize().cy, 39);
    Picture bitmap(26, 39);
    {
      CMemoryDC source(bitmap.Dc());
      const CSelectedObject selected(source, cells.GetSafeHandle());
      bitmap.Dc().BitBlt(0, 0, 26, 39, source, 0, 0);
    }
    const Picture picture = Look();
    const LONG top = (kHeight - 13) / 2;
    for (LONG y = 0; y < 13; ++y) {
      for (LONG x = 0; x < 13; ++x) {
        ASSERT_EQ(picture.At(x, top + y), bitmap.At(column * 13 + x, row * 13 + y))
            << x << "," << y;
      }
    }
  }

  COrlRadioButton radio;
};

}  // namespace

TEST_F(RadioButton, HasTheBoxOfItsState) {
  ExpectCell(0, 0);
  radio.SendMessage(BM_SETCHECK, BST_CHECKED);
  ExpectCell(1, 0);
  radio.SendMessage(BM_SETSTATE, TRUE);
  ExpectCell(1, 1);
  radio.SendMessage(BM_SETCHECK, BST_UNCHECKED);
  ExpectCell(0, 1);
  radio.EnableWindow(FALSE);
  ExpectCell(0, 2);
  radio.SendMessage(BM_SETCHECK, BST_CHECKED);
  ExpectCell(1, 2);
}

TEST_F(RadioButton, ShowsTheFocusInItsBox) {
  ::SetFocus(radio.m_hWnd);
  radio.SendMessage(BM_SETCHECK, BST_UNCHECKED);  // an automatic one is chosen by the focus
  ExpectCell(0, 1);
  ::SetFocus(parent.m_hWnd);
  ExpectCell(0, 0);
}

TEST_F(RadioButton, HasAllSixBoxesDifferent) {
  CBitmap cells;
  ASSERT_TRUE(cells.LoadBitmap(IDB_RADIO_BOXES));
  Picture bitmap(26, 39);
  CMemoryDC source(bitmap.Dc());
  const CSelectedObject selected(source, cells.GetSafeHandle());
  bitmap.Dc().BitBlt(0, 0, 26, 39, source, 0, 0);
  for (int first = 0; first < 6; ++first) {
    for (int second = first + 1; second < 6; ++second) {
      int different = 0;
      for (int i = 0; i < 13 * 13; ++i) {
        const auto at = [&](int cell) {
          return bitmap.At(cell % 2 * 13 + i % 13, cell / 2 * 13 + i / 13);
        };
        different += at(first) != at(second) ? 1 : 0;
      }
      EXPECT_GT(different, 0) << first << " and " << second;
    }
  }
}

TEST_F(RadioButton, HasItsTextBesideTheBox) {
  const Picture picture = Look();
  const CRect beside(13, 0, 100, kHeight);
  EXPECT_GT(picture.Count(kText, beside), 0);
  EXPECT_EQ(picture.Count(kText, beside) + picture.Count(kDark, beside), 87 * kHeight);
}

TEST_F(RadioButton, HasAnEngravedTextWhenDisabled) {
  const Picture enabled = Look();
  radio.EnableWindow(FALSE);
  const Picture picture = Look();
  for (LONG y = 0; y + 1 < kHeight; ++y) {
    for (LONG x = 14; x < 99; ++x) {
      if (enabled.At(x, y) != kText) continue;
      EXPECT_EQ(picture.At(x, y), kDisabledText);
      const Colour expected = enabled.At(x + 1, y + 1) == kText ? kDisabledText : kShadow;
      EXPECT_EQ(picture.At(x + 1, y + 1), expected);
    }
  }
  EXPECT_GT(picture.Count(kShadow), 0);
}

TEST_F(RadioButton, ContinuesTheGroundBesideIt) {
  parent.ground = [](int y) { return Colour(2 * y, 100 - y, 50 + y); };
  ::RedrawWindow(parent.m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
  const Picture picture = Look();
  for (LONG y = 0; y < kHeight; ++y) {
    EXPECT_EQ(picture.At(95, y), parent.ground(static_cast<int>(10 + y))) << y;
  }
}

TEST_F(RadioButton, HasAPlainGroundWhereNothingIsBesideIt) {
  parent.ground = [](int) { return Colour(200, 0, 0); };
  radio.MoveWindow(CRect(0, 10, 100, 10 + kHeight));
  ::RedrawWindow(parent.m_hWnd, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
  EXPECT_EQ(Look().At(95, 3), kDark);
}

TEST_F(RadioButton, ErasesToThePlainGround) {
  Picture picture(100, kHeight);
  const auto dc = reinterpret_cast<WPARAM>(picture.Dc().GetSafeHdc());
  EXPECT_TRUE(radio.SendMessage(WM_ERASEBKGND, dc));
  EXPECT_EQ(picture.Count(kDark), 100 * kHeight);
}

TEST_F(RadioButton, AsksForPaintWhenItsStateChanges) {
  const auto asks = [&](auto change) {
    ::UpdateWindow(radio.m_hWnd);
    EXPECT_FALSE(::GetUpdateRect(radio.m_hWnd, nullptr, FALSE));
    change();
    return ::GetUpdateRect(radio.m_hWnd, nullptr, FALSE) != FALSE;
  };
  EXPECT_TRUE(asks([&] { ::SetFocus(radio.m_hWnd); }));
  EXPECT_TRUE(asks([&] { ::SetFocus(parent.m_hWnd); }));
  EXPECT_TRUE(asks([&] { radio.EnableWindow(FALSE); }));
  EXPECT_TRUE(asks([&] { radio.EnableWindow(TRUE); }));
  EXPECT_TRUE(asks([&] { radio.SendMessage(BM_SETSTATE, TRUE); }));
  EXPECT_TRUE(asks([&] { radio.SendMessage(BM_SETCHECK, BST_CHECKED); }));
  EXPECT_TRUE(asks([&] { radio.SetWindowText("Other"); }));
}

TEST_F(RadioButton, IsStillChosenByAClickAndReleasesItsNeighbour) {
  const HWND other = Add("Button", "Other", BS_AUTORADIOBUTTON, {10, 40, 110, 60}, kId + 1);
  COrlRadioButton neighbour;
  ASSERT_TRUE(neighbour.AttachRadioButton(kId + 1, &parent));
  ::SendMessageA(other, BM_CLICK, 0, 0);
  EXPECT_EQ(neighbour.GetCheck(), BST_CHECKED);
  radio.SendMessage(BM_CLICK);
  EXPECT_EQ(radio.GetCheck(), BST_CHECKED);
  EXPECT_EQ(neighbour.GetCheck(), BST_UNCHECKED);
}
