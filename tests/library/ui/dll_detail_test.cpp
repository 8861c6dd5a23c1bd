// SPDX-License-Identifier: MIT
// The detail window of the built library: how it is reached and what it shows.
#include <atomic>

#include "tests/library/ui/driver_host.h"
#include "tests/support/replaced_import.h"

namespace {

using namespace ui_test;
using namespace std::chrono_literals;

constexpr int kLine1 = 1002;
constexpr int kLine2 = 1003;
constexpr int kLine3 = 1004;
constexpr int kCloseButton = 8;
constexpr SHORT kHeld = static_cast<SHORT>(0x8000);
constexpr SHORT kPressedSinceLastAsked = 1;

// What the library is told about the Control key. A real one would not do: the display server takes
// back a key that no finger holds.
std::atomic<SHORT> controlKey = 0;

SHORT WINAPI AskedKey(int key) {
  return key == VK_CONTROL ? controlKey.load() : SHORT{0};
}

class DetailWindow : public DriverHost {
 protected:
  void SetUp() override {
    DriverHost::SetUp();
    controlKey = 0;
    ASSERT_TRUE(ReplaceImport(GetModuleHandleW(L"velquin.dll"), "GetAsyncKeyState",
                              reinterpret_cast<void*>(&AskedKey)));
  }

  /// Clicks stop with the Control key held.
  void OpenDetail(SHORT key = kHeld) {
    ASSERT_TRUE(WaitEnabled(kStop));
    controlKey = key;
    BeginClick(kStop);
    detail = WaitForDialogWith(kLine1);
    controlKey = 0;
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

TEST_F(DetailWindow, AControlKeyThatWasPressedBeforeCountsToo) {
  Connect();
  OpenWindow();
  OpenDetail(kPressedSinceLastAsked);
  Close();
  Click(window, kStop);
  EXPECT_TRUE(mount.WaitFor("$MTSTP=1", 3000));
}

// While disconnected the stop button is disabled, but its command still comes from elsewhere.
TEST_F(DetailWindow, BeforeTheFirstConnectionTheLinesAreBlank) {
  OpenWindow();
  controlKey = kHeld;
  PostMessageW(window, WM_COMMAND, kStop, 0);
  detail = WaitForDialogWith(kLine1);
  ASSERT_NE(detail, nullptr);
  EXPECT_EQ(TextOf(detail, kLine1), L"    ");
  EXPECT_EQ(TextOf(detail, kLine2), L"    ");
  EXPECT_EQ(TextOf(detail, kLine3), L"  ");
  Close();
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

TEST_F(DetailWindow, HashesAreTakenOutOfTheVersion) {
  mount.Answers("$SYVER?", "$SYVER=#1.#23#");
  Connect();
  OpenWindow();
  OpenDetail();
  EXPECT_EQ(TextOf(detail, kLine1), L"1.23    ");
  Close();
}

// The window draws a button with another number, which there is none of.
TEST_F(DetailWindow, TheCloseButtonIsNotDrawn) {
  Connect();
  OpenWindow();
  OpenDetail();
  host.Do([&] {
    RedrawWindow(detail, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    HWND button = GetDlgItem(detail, kCloseButton);
    const RECT size = ClientOf(button);
    ASSERT_GT(size.right, 20);
    const COLORREF background = PixelOf(button, 0, 0);
    int drawn = 0;
    for (LONG y = 0; y < size.bottom; ++y) {
      for (LONG x = 0; x < size.right; ++x) drawn += PixelOf(button, x, y) != background ? 1 : 0;
    }
    EXPECT_EQ(drawn, 0);
  });
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
  RECT around = {};
  RECT own = {};
  GetWindowRect(window, &around);
  GetWindowRect(detail, &own);
  EXPECT_NEAR(own.left + own.right, around.left + around.right, 1) << "in its middle";
  EXPECT_NEAR(own.top + own.bottom, around.top + around.bottom, 1);
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
  // The modal loop must not swallow a message of the host on its way out.
  std::promise<void> handled;
  host.Begin([&] { handled.set_value(); });
  EXPECT_EQ(handled.get_future().wait_for(5s), std::future_status::ready);
}

}  // namespace
