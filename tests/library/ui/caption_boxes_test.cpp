// SPDX-License-Identifier: MIT
// The caption's boxes: where they are, what they look like, what the system hears of them.
#include "library/ui/orl_dialog.h"
#include "res/resource_ids.h"
#include "tests/library/ui/caption_fixture.h"
#include "tests/library/ui/gdi_objects.h"
#include "tests/support/replaced_import.h"

namespace {

using namespace ui_test;
using testing::Contains;
using testing::Not;
using testing::Pair;

struct Box {
  CaptionBox box;
  WPARAM hit;
};
constexpr Box kBoxes[] = {
    {kCloseBox, HTCLOSE}, {kMaximiseBox, HTMAXBUTTON}, {kMinimiseBox, HTMINBUTTON}};

class CaptionBoxesTest : public CaptionTest {
 protected:
  using Expectation = std::function<void(const Box& box, int row, int column)>;

  // Takes the mouse over every box, active and not, as the caption hears of it, and has all boxes
  // looked at each time. @param upper the row of the maximise box
  void LookAtEveryState(CPaintCaption& painter, int upper, const Expectation& expect) const {
    for (const CaptionLook& look : kCaptionLooks) {
      for (const Box& one : kBoxes) {
        const int rest = look.active ? 0 : 3;
        const auto all = [&](int column, const char* what) {
          SCOPED_TRACE(testing::Message()
                       << "active " << look.active << ", box " << one.box << ' ' << what);
          const int rows[] = {0, upper, 2};
          for (const Box& each : kBoxes)
            expect(each, rows[each.box], each.box == one.box ? column : rest);
        };
        const auto hit = static_cast<LRESULT>(one.hit);
        painter.Paint(window, look.active);
        all(rest, "normal");
        painter.PointerMoved(window, hit);
        all(rest + 1, "hot");
        SetLeftButton(true);
        painter.ButtonPressed(window, hit);
        all(rest + 2, "pressed");
        SetLeftButton(false);
        painter.ButtonReleased(window, HTCAPTION);
        all(rest, "let go elsewhere");
      }
    }
  }
  void ExpectImages(int upper) const {
    CPaintCaption painter;
    LookAtEveryState(painter, upper, [&](const Box& box, int row, int column) {
      EXPECT_THAT(CellsShown(box.box), Contains(Pair(row, column))) << "shown by " << box.box;
    });
  }
};

TEST_F(CaptionBoxesTest, EachHasTheImageOfItsKindAndState) {
  Do([&] {
    AddBoxes();
    ExpectImages(1);
  });
}

TEST_F(CaptionBoxesTest, AMaximisedWindowHasTheImageThatRestoresIt) {
  Do([&] {
    AddBoxes();
    ShowWindow(window, SW_MAXIMIZE);
    ASSERT_TRUE(IsZoomed(window));
    ExpectImages(3);
    ShowWindow(window, SW_RESTORE);
    ExpectImages(1);
  });
}

COLORREF ColourOfCell(int row, int column) {
  return RGB(60 + 40 * row, 60 + 30 * column, 250);
}

// Stands in for the boxes' picture: each cell has a colour of its own.
HBITMAP WINAPI LoadColouredCells(HINSTANCE, LPCSTR) {
  HDC screen = GetDC(nullptr);
  HDC picture = CreateCompatibleDC(screen);
  HBITMAP bitmap = CreateCompatibleBitmap(screen, 132, 56);
  HGDIOBJ before = SelectObject(picture, bitmap);
  for (int y = 0; y < 56; ++y) {
    for (int x = 0; x < 132; ++x) SetPixel(picture, x, y, ColourOfCell(y / 14, x / 22));
  }
  SelectObject(picture, before);
  DeleteDC(picture);
  ReleaseDC(nullptr, screen);
  return bitmap;
}

// Hot and pressed images are the same in an active and in an inactive caption, so only another
// picture tells their cells apart.
TEST_F(CaptionBoxesTest, EachStateHasACellOfItsOwn) {
  Do([&] {
    const ReplacedImport picture(GetModuleHandleW(nullptr), "LoadBitmapA",
                                 reinterpret_cast<void*>(&LoadColouredCells));
    CPaintCaption painter;
    const auto expect = [&](const Box& box, int row, int column) {
      const std::vector<COLORREF> shown = BoxPixels(box.box);
      const std::vector<COLORREF> wanted(shown.size(), ColourOfCell(row, column));
      EXPECT_TRUE(shown == wanted) << row << ", " << column << " shown by " << box.box;
    };
    AddBoxes();
    LookAtEveryState(painter, 1, expect);
    ShowWindow(window, SW_MAXIMIZE);
    LookAtEveryState(painter, 3, expect);
  });
}

std::vector<TRACKMOUSEEVENT> tracked;
decltype(&TrackMouseEvent) trackMouse = nullptr;

BOOL WINAPI KeepTracking(TRACKMOUSEEVENT* request) {
  tracked.push_back(*request);
  return trackMouse(request);
}

TEST_F(CaptionBoxesTest, AHoverOverThemIsAskedForAfterAMillisecond) {
  Do([&] {
    tracked.clear();
    const ReplacedImport standIn(GetModuleHandleW(nullptr), "TrackMouseEvent",
                                 reinterpret_cast<void*>(&KeepTracking));
    trackMouse = reinterpret_cast<decltype(trackMouse)>(standIn.Original());
    Send(WM_NCMOUSEMOVE, HTCAPTION);
    EXPECT_TRUE(tracked.empty()) << "beside them";
    Send(WM_NCMOUSEMOVE, HTCLOSE);
    Send(WM_NCMOUSEMOVE, HTCLOSE);
    ASSERT_EQ(tracked.size(), 1u) << "once a visit";
    EXPECT_EQ(tracked[0].hwndTrack, window);
    EXPECT_EQ(tracked[0].dwFlags, static_cast<DWORD>(TME_NONCLIENT | TME_HOVER | TME_LEAVE));
    EXPECT_EQ(tracked[0].dwHoverTime, 1u);  // ms
  });
}

TEST_F(CaptionBoxesTest, TheCloseBoxIsHitWhereItIsPainted) {
  RECT outer = {};
  GetWindowRect(window, &outer);
  const auto hit = [&](LONG x, LONG y) {
    return SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(outer.left + x, outer.top + y));
  };
  const LONG left = size.right - side - caption;
  EXPECT_EQ(hit(left, bottom), HTCLOSE);
  EXPECT_EQ(hit(size.right - side - 1, band - 1), HTCLOSE);
  EXPECT_EQ(hit(left - 1, band - 1), HTCAPTION);
  EXPECT_EQ(hit(left / 2, band / 2), HTCAPTION);
  EXPECT_EQ(hit(left / 2, band + 5), HTCLIENT);
}

// The system has a close area of its own, which reaches beyond the painted box.
TEST_F(CaptionBoxesTest, NothingElseOfTheBandIsACloseBox) {
  RECT outer = {};
  GetWindowRect(window, &outer);
  const RECT box = {size.right - side - caption, bottom, size.right - side, band};
  Do([&] {
    int wrong = 0;
    for (LONG y = 0; y < band; ++y) {
      for (LONG x = size.right - 2 * caption; x < size.right; ++x) {
        const LPARAM at = MAKELPARAM(outer.left + x, outer.top + y);
        const LRESULT hit = SendMessageW(window, WM_NCHITTEST, 0, at);
        const LRESULT wanted = PtInRect(&box, {x, y}) ? HTCLOSE : HTCAPTION;
        wrong += hit != wanted && hit != HTBORDER ? 1 : 0;
      }
    }
    EXPECT_EQ(wrong, 0);
    const LPARAM beside = MAKELPARAM(outer.left + box.right + 1, outer.top + box.top + 1);
    EXPECT_EQ(SendMessageW(window, WM_NCHITTEST, 0, beside), HTCAPTION);
  });
}

// A window with the two other boxes gets them as well, from the right edge inward.
TEST_F(CaptionBoxesTest, MaximiseAndMinimiseBoxesStandLeftOfTheCloseBox) {
  AddBoxes();
  RECT outer = {};
  GetWindowRect(window, &outer);
  const auto hit = [&](LONG x) {
    const LPARAM at = MAKELPARAM(outer.left + x, outer.top + bottom + 5);
    return SendMessageW(window, WM_NCHITTEST, 0, at);
  };
  const LONG right = size.right - side;
  EXPECT_EQ(hit(right - caption / 2), HTCLOSE);
  EXPECT_EQ(hit(right - caption - caption / 2), HTMAXBUTTON);
  EXPECT_EQ(hit(right - 2 * caption - caption / 2), HTMINBUTTON);
}

// Keeps what a dialog leaves to the system.
class ListeningDialog : public COrlDialog {
 public:
  ListeningDialog() : COrlDialog(IDD_DETAIL, nullptr) {}

  std::vector<UINT> leftToSystem;

 protected:
  LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
    leftToSystem.push_back(message);
    return COrlDialog::DefWindowProc(message, wParam, lParam);
  }
};

// It would draw its own hot button over the painted one.
TEST(CaptionBoxesAloneTest, TheSystemLearnsNothingOfAPointerOnTheBoxes) {
  App();
  const UiThread host;
  host.Do([&] {
    ListeningDialog dialog;
    ASSERT_TRUE(dialog.COrlDialog::Create());
    for (const UINT message : {WM_NCMOUSEMOVE, WM_NCMOUSEHOVER}) {
      for (const WPARAM box : {HTCLOSE, HTMAXBUTTON, HTMINBUTTON}) {
        dialog.leftToSystem.clear();
        dialog.SendMessage(message, box, 0);
        EXPECT_THAT(dialog.leftToSystem, Not(Contains(message))) << box;
      }
      dialog.SendMessage(message, HTCAPTION, 0);
      EXPECT_THAT(dialog.leftToSystem, Contains(message));
    }
    dialog.DestroyWindow();
  });
}

// Boxes of a dialog's own; the library's have none.
TEST(CaptionBoxesAloneTest, ANewSetOfCustomBoxesReplacesTheOldOne) {
  App();
  CPaintCaption painter;
  const int before = CountGdiObjects();
  painter.SetCustomButtons(IDB_CAPTION_BUTTONS, 3);
  EXPECT_EQ(CountGdiObjects(), before + 1);
  painter.SetCustomButtons(IDB_CAPTION_BUTTONS, 2);
  EXPECT_EQ(CountGdiObjects(), before + 1);
  painter.ClearCustomButtons();
  EXPECT_EQ(CountGdiObjects(), before);
}

}  // namespace
