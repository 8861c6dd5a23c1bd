// SPDX-License-Identifier: MIT
// Caption and frame as the library paints them, pixel by pixel, and the close box.
#include <gmock/gmock.h>

#include "res/resource_ids.h"
#include "tests/support/eventually.h"
#include "tests/support/replaced_import.h"
#include "tests/ui/gdi_objects.h"
#include "tests/ui/open_controller.h"
#include "ui/frame_sizes.h"
#include "ui/orl_dialog.h"
#include "ui/windows_version.h"

namespace {

using namespace ui_test;
using testing::Contains;
using testing::Not;

constexpr COLORREF kDark = RGB(34, 34, 34);

struct Look {
  bool active;
  COLORREF caption, frame, text;
};
constexpr Look kLooks[] = {{true, RGB(24, 24, 24), RGB(57, 57, 57), RGB(180, 180, 180)},
                           {false, RGB(57, 57, 57), RGB(0, 0, 0), RGB(86, 86, 86)}};

class CaptionTest : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(window, nullptr); }

  // Everything that a test does and looks at happens in one go on the window's thread, so that no
  // other message comes between.
  void Do(const std::function<void()>& body) const { controller.host.Do(body); }
  void Send(UINT message, WPARAM wParam) const { SendMessageW(window, message, wParam, 0); }
  COLORREF At(LONG x, LONG y) const { return PixelOf(window, x, y); }

  void ExpectAll(RECT rect, COLORREF colour, const char* what) const {
    int wrong = 0;
    for (LONG y = rect.top; y < rect.bottom; ++y) {
      for (LONG x = rect.left; x < rect.right; ++x) wrong += At(x, y) != colour ? 1 : 0;
    }
    EXPECT_EQ(wrong, 0) << what;
  }

  // Pixels of the close box that differ from a cell of the picture. Columns: 0 normal, 1 hot,
  // 2 pressed, and three more of an inactive window.
  int DifferingPixels(int column) const {
    HDC screen = GetDC(nullptr);
    HDC picture = CreateCompatibleDC(screen);
    ReleaseDC(nullptr, screen);
    HBITMAP bitmap = LoadBitmapA(GetModuleHandleA(nullptr), MAKEINTRESOURCEA(8030));
    HGDIOBJ before = SelectObject(picture, bitmap);
    const LONG width = std::min<LONG>(22, caption);
    const LONG left = size.right - side - caption + std::max<LONG>(0, (caption - 22) / 2);
    const LONG top = bottom + std::max<LONG>(0, (caption - 14) / 2);
    int different = 0;
    for (int y = 0; y < 14; ++y) {
      for (int x = 0; x < width; ++x)
        different += At(left + x, top + y) != GetPixel(picture, column * 22 + x, y) ? 1 : 0;
    }
    SelectObject(picture, before);
    DeleteObject(bitmap);
    DeleteDC(picture);
    return different;
  }

  // The first and the last column of an active caption's text.
  std::pair<LONG, LONG> TextColumns() const {
    LONG first = size.right;
    LONG last = 0;
    for (LONG y = 1; y < band; ++y) {
      for (LONG x = 1; x < size.right - side - caption; ++x) {
        if (At(x, y) == RGB(24, 24, 24)) continue;
        first = std::min(first, x);
        last = std::max(last, x);
      }
    }
    return {first, last};
  }

  // The mouse's messages while the window has taken it. @param x, y in the window's coordinates
  void SendCaptured(UINT message, LONG x, LONG y) const {
    POINT at = {x, y};
    RECT outer = {};
    GetWindowRect(window, &outer);
    at.x += outer.left;
    at.y += outer.top;
    ScreenToClient(window, &at);
    SendMessageW(window, message, 0, MAKELPARAM(at.x, at.y));
  }

  static void SetLeftButton(bool down) {
    BYTE keys[256] = {};
    GetKeyboardState(keys);
    keys[VK_LBUTTON] = down ? 0x80 : 0;
    SetKeyboardState(keys);
  }

  const OpenController controller;
  HWND window = controller.window;
  const RECT size = FrameOf(window);
  const LONG side = GetSystemMetrics(SM_CXSIZEFRAME) + GetSystemMetrics(SM_CXFIXEDFRAME) +
                    GetSystemMetrics(SM_CXBORDER);
  const LONG bottom = GetSystemMetrics(SM_CYSIZEFRAME) + GetSystemMetrics(SM_CYFIXEDFRAME) +
                      GetSystemMetrics(SM_CYBORDER);
  const LONG caption = GetSystemMetrics(SM_CYCAPTION);
  const LONG band = bottom + caption;
  const POINT closeBox = {size.right - side - caption / 2, bottom + caption / 2};
};

TEST_F(CaptionTest, BandsAndFrameHaveTheirColours) {
  const LONG w = size.right;
  const LONG h = size.bottom;
  for (const Look& look : kLooks) {
    SCOPED_TRACE(look.active);
    Do([&] {
      Send(WM_NCACTIVATE, look.active);
      ExpectAll({0, 0, w, 1}, look.frame, "upper edge");
      ExpectAll({0, h - 1, w, h}, look.frame, "lower edge");
      ExpectAll({0, 0, 1, h}, look.frame, "left edge");
      ExpectAll({w - 1, 0, w, h}, look.frame, "right edge");
      ExpectAll({1, 1, w - 1, 6}, look.caption, "caption above the text");
      ExpectAll({1, 1, 6, band}, look.caption, "left end of the caption");
      ExpectAll({w - side + 1, 1, w - 1, band}, look.caption, "right end of the caption");
      ExpectAll({1, band, side, h - 1}, kDark, "left band");
      ExpectAll({w - side, band, w - 1, h - 1}, kDark, "right band");
      ExpectAll({1, h - bottom, w - 1, h - 1}, kDark, "lower band");
    });
  }
}

TEST_F(CaptionTest, TheClientAreaBelowTheBandsIsLeftAlone) {
  Do([&] {
    const LONG x = side + 20;
    const LONG y = band + FromDialogUnits(window, 0, 3, 0, 0).top;
    RedrawWindow(window, nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
    const COLORREF before = At(x, y);
    EXPECT_NE(before, kDark);  // the frame round the direction buttons
    Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(At(x, y), before);
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_EQ(At(x, y), before);
  });
}

TEST_F(CaptionTest, TheTextHasItsColour) {
  for (const Look& look : kLooks) {
    Do([&] {
      Send(WM_NCACTIVATE, look.active);
      int found = 0;
      for (LONG y = 1; y < band; ++y) {
        for (LONG x = 1; x < size.right - side - caption; ++x) found += At(x, y) == look.text;
      }
      EXPECT_GT(found, 20) << look.active;
    });
  }
}

std::vector<UINT> askedSizes;
decltype(&SystemParametersInfoA) systemParameters = nullptr;

BOOL WINAPI AskedParameters(UINT action, UINT number, void* data, UINT update) {
  if (action == SPI_GETNONCLIENTMETRICS) {
    askedSizes.push_back(number);
    askedSizes.push_back(static_cast<NONCLIENTMETRICSA*>(data)->cbSize);
  }
  return systemParameters(action, number, data, update);
}

// The record's older size: Windows before Vista knows no other.
TEST_F(CaptionTest, TheFontIsAskedForWithTheOlderSizeOfTheRecord) {
  HMODULE self = GetModuleHandleW(nullptr);
  void** slot = ImportSlot(self, "SystemParametersInfoA");
  ASSERT_NE(slot, nullptr);
  void* const original = *slot;
  systemParameters = reinterpret_cast<decltype(systemParameters)>(original);
  Do([&] {
    askedSizes.clear();
    ASSERT_TRUE(
        ReplaceImport(self, "SystemParametersInfoA", reinterpret_cast<void*>(&AskedParameters)));
    Send(WM_NCACTIVATE, TRUE);
    ASSERT_TRUE(ReplaceImport(self, "SystemParametersInfoA", original));
  });
  EXPECT_THAT(askedSizes, testing::ElementsAre(340u, 340u));
}

TEST_F(CaptionTest, TheTextIsCentredFromWindows8AndElseBeginsAtTheFrame) {
  Do([&] {
    Send(WM_NCACTIVATE, TRUE);
    const auto [first, last] = TextColumns();
    if (IsWindows8OrLater()) {
      EXPECT_NEAR((first + last) / 2, size.right / 2, 3);
    } else {
      EXPECT_NEAR(first, side, 3);
    }
  });
}

// The boxes have not been placed, so they keep no room free.
TEST_F(CaptionTest, CustomBoxesDoNotMoveTheTextIntoTheFrame) {
  Do([&] {
    CPaintCaption painter;
    painter.Paint(window, true);
    const auto before = TextColumns();
    painter.SetCustomButtons(IDB_CAPTION_BUTTONS, 2);
    painter.Paint(window, true);
    EXPECT_EQ(TextColumns(), before);
  });
}

TEST_F(CaptionTest, ADisabledWindowIsPaintedInactive) {
  Do([&] {
    EnableWindow(window, FALSE);
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_EQ(At(3, 3), RGB(57, 57, 57));
    EnableWindow(window, TRUE);
    Send(WM_NCACTIVATE, TRUE);
    EXPECT_EQ(At(3, 3), RGB(24, 24, 24));
  });
}

TEST_F(CaptionTest, ADisabledWindowIsPaintedInactiveInSpiteOfTheStayActiveFlag) {
  Do([&] {
    CWnd* object = CWnd::FromHandlePermanent(window);
    object->m_nFlags |= WF_STAYACTIVE;
    EnableWindow(window, FALSE);
    for (const WPARAM active : {TRUE, FALSE}) {
      Send(WM_NCACTIVATE, active);
      EXPECT_EQ(At(3, 3), RGB(57, 57, 57)) << active;
    }
    EnableWindow(window, TRUE);
    object->m_nFlags &= ~WF_STAYACTIVE;
  });
}

TEST_F(CaptionTest, TheStayActiveFlagKeepsItActive) {
  Do([&] {
    CWnd* object = CWnd::FromHandlePermanent(window);
    object->m_nFlags |= WF_STAYACTIVE;
    Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(At(3, 3), RGB(24, 24, 24));
    object->m_nFlags &= ~WF_STAYACTIVE;
    Send(WM_NCACTIVATE, FALSE);
    EXPECT_EQ(At(3, 3), RGB(57, 57, 57));
  });
}

TEST_F(CaptionTest, TheCloseBoxShowsHotAndPressedImages) {
  for (const Look& look : kLooks) {
    const int normal = look.active ? 0 : 3;
    SCOPED_TRACE(look.active);
    Do([&] {
      Send(WM_NCACTIVATE, look.active);
      EXPECT_EQ(DifferingPixels(normal), 0) << "normal";
      Send(WM_NCMOUSEMOVE, HTCLOSE);
      EXPECT_EQ(DifferingPixels(normal + 1), 0) << "hot";
      EXPECT_NE(DifferingPixels(normal), 0);
      SetLeftButton(true);
      Send(WM_NCLBUTTONDOWN, HTCLOSE);
      EXPECT_EQ(DifferingPixels(normal + 2), 0) << "pressed";
      Send(WM_NCMOUSEMOVE, HTCAPTION);
      EXPECT_EQ(DifferingPixels(normal), 0) << "pressed, pointer elsewhere";
      Send(WM_NCMOUSEMOVE, HTCLOSE);
      EXPECT_EQ(DifferingPixels(normal + 2), 0) << "pointer back";
      Send(WM_NCMOUSELEAVE, 0);
      EXPECT_EQ(DifferingPixels(normal), 0) << "pointer gone";
      SetLeftButton(false);
      Send(WM_NCLBUTTONUP, HTCAPTION);
      EXPECT_TRUE(IsWindowVisible(window));
    });
  }
}

TEST_F(CaptionTest, AReleaseOutsideCancels) {
  Do([&] {
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    SetLeftButton(false);
    Send(WM_NCLBUTTONUP, HTCAPTION);
    Send(WM_NCLBUTTONUP, HTCLOSE);
  });
  controller.host.HandlePosted();
  EXPECT_TRUE(IsWindowVisible(window));
}

// The release itself then goes to another window; the next movement shows that the button is up.
TEST_F(CaptionTest, AReleaseOutsideTheWindowCancels) {
  Do([&] {
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    SetLeftButton(false);
    Send(WM_NCMOUSEMOVE, HTCLOSE);
    Send(WM_NCLBUTTONUP, HTCLOSE);
  });
  controller.host.HandlePosted();
  EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(CaptionTest, APressTakesTheMouseUntilTheRelease) {
  Do([&] {
    Send(WM_NCACTIVATE, TRUE);
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    EXPECT_EQ(GetCapture(), window);
    SendCaptured(WM_MOUSEMOVE, -50, -50);
    EXPECT_EQ(DifferingPixels(0), 0) << "pointer outside the window";
    SendCaptured(WM_MOUSEMOVE, closeBox.x, closeBox.y);
    EXPECT_EQ(DifferingPixels(2), 0) << "pointer back";
    SendCaptured(WM_MOUSEMOVE, size.right / 2, size.bottom / 2);
    EXPECT_EQ(DifferingPixels(0), 0) << "pointer on the client area";
    SetLeftButton(false);
    SendCaptured(WM_LBUTTONUP, -50, -50);
    EXPECT_EQ(GetCapture(), nullptr);
  });
  controller.host.HandlePosted();
  EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(CaptionTest, AReleaseOfTheTakenMouseOnTheCloseBoxCloses) {
  Do([&] {
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    SendCaptured(WM_MOUSEMOVE, -50, -50);
    SetLeftButton(false);
    SendCaptured(WM_LBUTTONUP, closeBox.x, closeBox.y);
    EXPECT_EQ(GetCapture(), nullptr);
  });
  EXPECT_TRUE(WaitUntilHidden(window));
}

TEST_F(CaptionTest, APressThatWasCancelledDoesNotMakeALaterReleaseClose) {
  Do([&] {
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    SetLeftButton(false);
    SendCaptured(WM_LBUTTONUP, -50, -50);
    SetLeftButton(true);
    SendCaptured(WM_LBUTTONDOWN, size.right / 2, size.bottom / 2);
    SetLeftButton(false);
    Send(WM_NCLBUTTONUP, HTCLOSE);
    SendCaptured(WM_LBUTTONUP, closeBox.x, closeBox.y);
  });
  controller.host.HandlePosted();
  EXPECT_TRUE(IsWindowVisible(window));
}

// Another window, or the system, may take the mouse away from a held button.
TEST_F(CaptionTest, ALostMouseCancels) {
  Do([&] {
    Send(WM_NCACTIVATE, TRUE);
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    SetCapture(controller.host.Window());
    EXPECT_EQ(DifferingPixels(0), 0);
    ReleaseCapture();
    Send(WM_NCLBUTTONUP, HTCLOSE);
    SendCaptured(WM_LBUTTONUP, closeBox.x, closeBox.y);
    SetLeftButton(false);
  });
  controller.host.HandlePosted();
  EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(CaptionTest, APressBesideTheCloseBoxEndsAnEarlierOne) {
  Do([&] {
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    Send(WM_NCLBUTTONDOWN, HTBORDER);
    EXPECT_EQ(GetCapture(), nullptr);
    Send(WM_NCLBUTTONUP, HTCLOSE);
    SetLeftButton(false);
  });
  controller.host.HandlePosted();
  EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(CaptionTest, TheMouseIsOnlyTakenByAPressOnAButton) {
  Do([&] {
    Send(WM_NCLBUTTONDOWN, HTBORDER);
    EXPECT_EQ(GetCapture(), nullptr);
  });
}

TEST_F(CaptionTest, ASecondPressSoonAfterTheFirstIsAPressToo) {
  Do([&] {
    Send(WM_NCACTIVATE, TRUE);
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    SendCaptured(WM_LBUTTONUP, -50, -50);
    Send(WM_NCLBUTTONDBLCLK, HTCLOSE);
    EXPECT_EQ(DifferingPixels(2), 0);
    EXPECT_TRUE(IsWindowVisible(window));
    SetLeftButton(false);
    SendCaptured(WM_LBUTTONUP, closeBox.x, closeBox.y);
  });
  EXPECT_TRUE(WaitUntilHidden(window));
}

TEST_F(CaptionTest, AReleaseOnTheCloseBoxCloses) {
  Do([&] {
    SetLeftButton(true);
    Send(WM_NCLBUTTONDOWN, HTCLOSE);
    SetLeftButton(false);
    Send(WM_NCLBUTTONUP, HTCLOSE);
  });
  EXPECT_TRUE(WaitUntilHidden(window));
  EXPECT_TRUE(IsWindow(window));
}

TEST_F(CaptionTest, TheCloseBoxIsHitWhereItIsPainted) {
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
TEST_F(CaptionTest, NothingElseOfTheBandIsACloseBox) {
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

// The pointer is moved on the window's own thread: the display tells that one of each movement, and
// it would take a movement of another thread for a later one of the hand.
TEST_F(CaptionTest, TheMouseItselfWorksTheCloseBox) {
  RECT outer = {};
  GetWindowRect(window, &outer);
  const auto move = [&](LONG x, LONG y) {
    Do([&] { SetCursorPos(outer.left + x, outer.top + y); });
  };
  const auto button = [&](DWORD what) { Do([&] { mouse_event(what, 0, 0, 0, 0); }); };
  // Active or not, as the display may hand the activation on.
  const auto shows = [&](int column) {
    return Eventually(
        [&] {
          bool same = false;
          Do([&] { same = DifferingPixels(column) == 0 || DifferingPixels(column + 3) == 0; });
          return same;
        },
        std::chrono::seconds(5));
  };
  const auto hasMouse = [&] {
    bool has = false;
    Do([&] { has = GetCapture() == window; });
    return has;
  };
  Do([&] { SetForegroundWindow(window); });
  move(closeBox.x, closeBox.y);
  EXPECT_TRUE(shows(1)) << "hot";
  button(MOUSEEVENTF_LEFTDOWN);
  EXPECT_TRUE(shows(2)) << "pressed";
  move(size.right + 50, size.bottom + 50);
  EXPECT_TRUE(shows(0)) << "held, pointer outside the window";
  EXPECT_TRUE(hasMouse());
  button(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(Eventually([&] { return !hasMouse(); }, std::chrono::seconds(5)));
  move(closeBox.x, closeBox.y);
  EXPECT_TRUE(shows(1)) << "hot again, as the release outside did not close";
  button(MOUSEEVENTF_LEFTDOWN);
  EXPECT_TRUE(shows(2));
  button(MOUSEEVENTF_LEFTUP);
  EXPECT_TRUE(WaitUntilHidden(window));
  move(GetSystemMetrics(SM_CXSCREEN), GetSystemMetrics(SM_CYSCREEN));
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
TEST(CaptionBoxesTest, TheSystemLearnsNothingOfAPointerOnTheBoxes) {
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

// A window whose frame is wider than the painted bands, as frames with a padded border or of
// another resolution are.
constexpr LONG kWideFrame = 40;  // pixels

LRESULT CALLBACK WideFrameProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_NCCALCSIZE) {
    InflateRect(reinterpret_cast<RECT*>(lParam), -kWideFrame, -kWideFrame);
    return 0;
  }
  return message == WM_NCPAINT ? 0 : DefWindowProcW(window, message, wParam, lParam);
}

TEST(CaptionBoxesTest, AFrameThatIsWiderThanTheBandsIsPaintedToItsClientArea) {
  App();
  WNDCLASSW description = {};
  description.lpfnWndProc = &WideFrameProc;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = L"VelquinTestWideFrame";
  RegisterClassW(&description);
  HWND window = CreateWindowExW(0, L"VelquinTestWideFrame", L"", WS_POPUP | WS_VISIBLE, 100, 100,
                                200, 160, nullptr, nullptr, description.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  CPaintCaption painter;
  painter.Paint(window, true);
  const FrameSizes sizes;
  ASSERT_LT(sizes.band, kWideFrame - 2);
  for (const POINT at : {POINT{kWideFrame - 1, 80},
                         {200 - kWideFrame, 80},
                         {100, kWideFrame - 1},
                         {100, 160 - kWideFrame},
                         {sizes.side, sizes.band + 1}}) {
    EXPECT_EQ(PixelOf(window, at.x, at.y), kDark) << at.x << ' ' << at.y;
  }
  DestroyWindow(window);
}

// Boxes of a dialog's own; the library's have none.
TEST(CaptionBoxesTest, ANewSetOfCustomBoxesReplacesTheOldOne) {
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

// Nor is it counted as painted: the next repaint shows the state of the last real one.
TEST_F(CaptionTest, AMinimisedWindowIsNotPainted) {
  Do([&] {
    CPaintCaption painter;
    painter.Paint(window, true);
    ShowWindow(window, SW_MINIMIZE);
    painter.Paint(window, false);
    ShowWindow(window, SW_RESTORE);
    painter.Repaint(window);
    EXPECT_EQ(At(3, 3), RGB(24, 24, 24));
  });
}

// A window with the two other boxes gets them as well, from the right edge inward.
TEST(CaptionBoxesTest, MaximiseAndMinimiseBoxesStandLeftOfTheCloseBox) {
  const OpenController controller;
  HWND window = controller.window;
  const LONG style = GetWindowLongW(window, GWL_STYLE);
  SetWindowLongW(window, GWL_STYLE, style | WS_MAXIMIZEBOX | WS_MINIMIZEBOX);
  RECT outer = {};
  GetWindowRect(window, &outer);
  const LONG caption = GetSystemMetrics(SM_CYCAPTION);
  const LONG right = outer.right - GetSystemMetrics(SM_CXSIZEFRAME) -
                     GetSystemMetrics(SM_CXFIXEDFRAME) - GetSystemMetrics(SM_CXBORDER);
  const LONG y = outer.top + GetSystemMetrics(SM_CYSIZEFRAME) + GetSystemMetrics(SM_CYFIXEDFRAME) +
                 GetSystemMetrics(SM_CYBORDER) + 5;
  const auto hit = [&](LONG x) { return SendMessageW(window, WM_NCHITTEST, 0, MAKELPARAM(x, y)); };
  EXPECT_EQ(hit(right - caption / 2), HTCLOSE);
  EXPECT_EQ(hit(right - caption - caption / 2), HTMAXBUTTON);
  EXPECT_EQ(hit(right - 2 * caption - caption / 2), HTMINBUTTON);
}

}  // namespace
