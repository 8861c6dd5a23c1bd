// SPDX-License-Identifier: MIT
// The detail window of the built library: how it is reached and what it shows.
#include "tests/ui/driver_host.h"

namespace {

using namespace ui_test;
using namespace std::chrono_literals;

constexpr int kLine1 = 1002;
constexpr int kLine2 = 1003;
constexpr int kLine3 = 1004;
constexpr int kCloseButton = 8;

class DetailWindow : public DriverHost {
 protected:
  void TearDown() override {
    HoldControl(false);
    DriverHost::TearDown();
  }

  // The system answers each thread by itself, and tells a key once more that was pressed before.
  void HoldControl(bool down) const {
    keybd_event(VK_CONTROL, 0x1D, down ? 0 : KEYEVENTF_KEYUP, 0);
    const bool seen = Eventually(
        [&] {
          SHORT state = 0;
          host.Do([&] { state = GetAsyncKeyState(VK_CONTROL); });
          return down ? state < 0 : state == 0;
        },
        3s);
    EXPECT_TRUE(seen) << down;
  }
  /// Clicks stop with the Control key held.
  void OpenDetail() {
    ASSERT_TRUE(WaitEnabled(kStop));
    HoldControl(true);
    BeginClick(kStop);
    detail = WaitForDialogWith(kLine1);
    HoldControl(false);
    ASSERT_NE(detail, nullptr);
  }
  void Close() const {
    PressKey(GetDlgItem(detail, kLine1), VK_ESCAPE);
    EXPECT_TRUE(WaitUntilGone(detail));
  }

  HWND detail = nullptr;
};

TEST_F(DetailWindow, ControlClickOnStopOpensItAndDoesNotStop) {
  Connect();
  OpenWindow();
  OpenDetail();
  EXPECT_TRUE(Quiet("$MTSTP="));
  Close();
  EXPECT_FALSE(mount.Saw("$MTSTP="));
  EXPECT_TRUE(IsWindowEnabled(window));
}

TEST_F(DetailWindow, ShowsVersionClockAndSite) {
  mount.Answers("$SYVER?", "$SYVER=1.23");
  mount.Answers("$SYUTM?", "$SYUTM=2024,5,17,13,2,9.9");
  mount.Answers("$SYLOC?", "$SYLOC=139,35,9");
  Connect();
  OpenWindow();
  OpenDetail();
  EXPECT_EQ(TextOf(detail, kLine1), L"1.23    ");
  EXPECT_EQ(TextOf(detail, kLine2), L"2024/5/17 13:2:9 9  ");
  EXPECT_EQ(TextOf(detail, kLine3), L"139.000000 35.000000 ");
  Close();
}

TEST_F(DetailWindow, HashesAreTakenOutOfTheVersionOnly) {
  mount.Answers("$SYVER?", "$SYVER=#1.#23#");
  Connect();
  OpenWindow();
  OpenDetail();
  EXPECT_EQ(TextOf(detail, kLine1), L"1.23    ");
  Close();
}

TEST_F(DetailWindow, TheCloseButtonDoesNothing) {
  Connect();
  OpenWindow();
  OpenDetail();
  Click(detail, kCloseButton);
  SendMessageW(detail, WM_COMMAND, kCloseButton, 0);
  EXPECT_TRUE(IsWindowVisible(detail));
  Close();
}

TEST_F(DetailWindow, TheCloseBoxClosesIt) {
  Connect();
  OpenWindow();
  OpenDetail();
  PostMessageW(detail, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_TRUE(WaitUntilGone(detail));
}

TEST_F(DetailWindow, ItIsModalToTheHandController) {
  Connect();
  OpenWindow();
  OpenDetail();
  EXPECT_FALSE(IsWindowEnabled(window));
  EXPECT_EQ(GetWindow(detail, GW_OWNER), window);
  Close();
  EXPECT_TRUE(IsWindowEnabled(window));
}

// The host ends the connection from its own window, which the detail window does not block.
TEST_F(DetailWindow, TheEndOfTheConnectionTakesItAlong) {
  Connect();
  OpenWindow();
  OpenDetail();
  host.Do([&] { dll.End(nullptr); });
  EXPECT_TRUE(WaitUntilGone(detail));
  EXPECT_FALSE(IsWindow(window));
  host.Do([] {});
}

}  // namespace
