// SPDX-License-Identifier: MIT
// The caption's boxes under the mouse: hot, pressed, let go, and what comes of it.
#include "tests/library/ui/caption_fixture.h"
#include "tests/support/eventually.h"

namespace {

using namespace ui_test;

TEST_F(CaptionTest, TheCloseBoxShowsHotAndPressedImages) {
  for (const CaptionLook& look : kCaptionLooks) {
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

// The pointer is moved on the window's own thread: the display tells that one of each movement, and
// it would take a movement of another thread for a later one of the hand.
TEST_F(CaptionTest, TheMouseItselfWorksTheCloseBox) {
  RECT outer = {};
  GetWindowRect(window, &outer);
  const auto move = [&](LONG x, LONG y) {
    Do([&] { SetCursorPos(outer.left + x, outer.top + y); });
  };
  const auto button = [&](DWORD what) { Do([&] { mouse_event(what, 0, 0, 0, 0); }); };
  // The display may hand the activation on; the box has to look like the rest of the caption.
  const auto shows = [&](int column) {
    return Eventually(
        [&] {
          bool same = false;
          Do([&] {
            const bool active = GetActiveWindow() == window;
            const bool paintedActive = At(3, 3) == RGB(24, 24, 24);
            same = active == paintedActive && DifferingPixels(column + (active ? 0 : 3)) == 0;
          });
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

}  // namespace
