// SPDX-License-Identifier: MIT
// The hand controller's direction pad, seen from the engine: which hand moves it asks for, in which
// order, with which speed.
#include <gmock/gmock.h>

#include <algorithm>

#include "library/ui/dlg_controller.h"
#include "simulator/scripted_controller.h"
#include "tests/library/ui/open_controller.h"
#include "tests/library/ui/slew_calls.h"
#include "tests/support/eventually.h"
#include "tests/support/replaced_import.h"

namespace {

using namespace ui_test;
using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr int kNorth = 3010;
constexpr int kSlider = 1007;

class HandControllerTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(window, nullptr);
    mount.LooksLikeAMount();
    ASSERT_EQ(controller.engine.Start(nullptr, mount.Address().c_str()), 1);
    ASSERT_TRUE(Eventually([&] { return IsEnabled(window, kNorth); }, 5s));
    ClearSlewCalls();
  }
  void TearDown() override { ClearSlewCalls(); }

  void Hold(int id, bool down) const {
    SendDlgItemMessageW(window, id, BM_SETSTATE, down ? TRUE : FALSE, 0);
  }
  static bool WaitForCalls(size_t count) {
    return Eventually([=] { return SlewCalls().size() >= count; }, 5s);
  }
  // The timer as if it had run, at once.
  void Tick() const { SendMessageW(window, WM_TIMER, 1000, 0); }
  void KillTicks() const {
    controller.host.Do([&] { KillTimer(window, 1000); });
  }
  void StopTicking() const {
    KillTicks();
    ClearSlewCalls();
  }

  simulator::ScriptedController mount;
  OpenController controller;
  HWND window = controller.window;
};

TEST_F(HandControllerTest, TheSliderOpensAtItsFastEnd) {
  EXPECT_EQ(SendDlgItemMessageW(window, kSlider, TBM_GETRANGEMIN, 0, 0), 0);
  EXPECT_EQ(SendDlgItemMessageW(window, kSlider, TBM_GETRANGEMAX, 0, 0), 8);
  EXPECT_EQ(SendDlgItemMessageW(window, kSlider, TBM_GETPOS, 0, 0), 8);
  EXPECT_EQ(SendDlgItemMessageW(window, kSlider, TBM_GETNUMTICS, 0, 0), 9);
}

TEST_F(HandControllerTest, TheSliderDrawsNoFocusRectangle) {
  HWND slider = GetDlgItem(window, kSlider);
  controller.host.Do([&] {
    SetFocus(slider);
    ASSERT_EQ(GetFocus(), slider);
    UpdateWindow(slider);
    HDC dc = GetDC(slider);
    int dots = 0;
    for (int x = 0; x < ClientOf(slider).right; ++x) dots += GetPixel(dc, x, 0) != RGB(34, 34, 34);
    ReleaseDC(slider, dc);
    EXPECT_EQ(dots, 0);
  });
}

TEST_F(HandControllerTest, AHeldButtonPushesTenTimesASecond) {
  Hold(kNorth, true);
  ASSERT_TRUE(WaitForCalls(21));
  const auto times = SlewCallTimes();
  std::vector<std::chrono::steady_clock::duration> pauses;
  for (size_t i = 1; i < times.size(); ++i) pauses.push_back(times[i] - times[i - 1]);
  // The one in the middle: on a busy machine some ticks are late, and the next is early for it.
  std::sort(pauses.begin(), pauses.end());
  EXPECT_GT(pauses[pauses.size() / 2], 80ms);
  EXPECT_LT(pauses[pauses.size() / 2], 150ms);
  Hold(kNorth, false);
}

TEST_F(HandControllerTest, AHeldButtonPushesUntilItIsLetGoAndReleasesOnce) {
  Hold(kNorth, true);
  ASSERT_TRUE(WaitForCalls(3));
  Hold(kNorth, false);
  ASSERT_TRUE(Eventually([] { return SlewCalls().back().pushed == 0; }, 5s));
  KillTicks();
  for (int i = 0; i < 5; ++i) Tick();
  std::vector<SlewCall> expected(SlewCalls().size(), SlewCall{1, 1, 8});
  expected.back().pushed = 0;
  EXPECT_EQ(SlewCalls(), expected);
}

TEST_F(HandControllerTest, TheReleaseIsToldExactlyOnce) {
  StopTicking();
  Hold(kNorth, true);
  Tick();
  Tick();
  Hold(kNorth, false);
  Tick();
  Tick();
  EXPECT_THAT(SlewCalls(), ElementsAre(SlewCall{1, 1, 8}, SlewCall{1, 1, 8}, SlewCall{1, 0, 8}));
}

TEST_F(HandControllerTest, SeveralHeldButtonsAreToldNorthSouthEastWest) {
  StopTicking();
  for (const int id : {3013, 3012, 3011, 3010}) Hold(id, true);
  Tick();
  EXPECT_THAT(SlewCalls(), ElementsAre(SlewCall{1, 1, 8}, SlewCall{2, 1, 8}, SlewCall{3, 1, 8},
                                       SlewCall{4, 1, 8}));
  ClearSlewCalls();
  for (const int id : {3011, 3013}) Hold(id, false);
  Tick();
  EXPECT_THAT(SlewCalls(), ElementsAre(SlewCall{1, 1, 8}, SlewCall{2, 0, 8}, SlewCall{3, 1, 8},
                                       SlewCall{4, 0, 8}));
}

TEST_F(HandControllerTest, TheSlidersPositionIsTheSpeed) {
  StopTicking();
  for (const int speed : {0, 3, 8}) {
    SendDlgItemMessageW(window, kSlider, TBM_SETPOS, TRUE, speed);
    ClearSlewCalls();
    Hold(kNorth, true);
    Tick();
    EXPECT_THAT(SlewCalls(), ElementsAre(SlewCall{1, 1, speed}));
  }
}

TEST_F(HandControllerTest, AClickBetweenTwoTicksGoesUnseen) {
  StopTicking();
  Click(window, kNorth);
  Tick();
  EXPECT_THAT(SlewCalls(), IsEmpty());
}

TEST_F(HandControllerTest, ADoubleClickIsTwoPresses) {
  StopTicking();
  HWND button = GetDlgItem(window, kNorth);
  const auto send = [&](UINT message) {
    SendMessageW(button, message, 0, MAKELPARAM(3, 3));
    Tick();
  };
  send(WM_LBUTTONDOWN);
  send(WM_LBUTTONUP);
  send(WM_LBUTTONDBLCLK);
  send(WM_LBUTTONUP);
  EXPECT_THAT(SlewCalls(), ElementsAre(SlewCall{1, 1, 8}, SlewCall{1, 0, 8}, SlewCall{1, 1, 8},
                                       SlewCall{1, 0, 8}));
}

TEST_F(HandControllerTest, AnyTimerCountsAsATick) {
  StopTicking();
  Hold(kNorth, true);
  SendMessageW(window, WM_TIMER, 77, 0);
  EXPECT_THAT(SlewCalls(), ElementsAre(SlewCall{1, 1, 8}));
}

std::vector<std::pair<UINT_PTR, UINT>> timers;  // number and milliseconds
decltype(&SetTimer) setTimer = nullptr;

UINT_PTR WINAPI KeepTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC procedure) {
  timers.emplace_back(id, periodMs);
  return setTimer(window, id, periodMs, procedure);
}

// The timers that this program begins, from here on.
class TimersTest : public testing::Test {
 protected:
  TimersTest()
      : standIn_(GetModuleHandleW(nullptr), "SetTimer", reinterpret_cast<void*>(&KeepTimer)) {
    setTimer = reinterpret_cast<decltype(setTimer)>(standIn_.Original());
    timers.clear();
  }

 private:
  const ReplacedImport standIn_;
};

TEST_F(TimersTest, TheWindowTicksAsOftenAsTheEngineWorks) {
  const OpenController controller;
  EXPECT_EQ(controller.engine.Period(), 100);  // ms
  EXPECT_THAT(timers, ElementsAre(Pair(1000, 100)));
}

// Without an engine the window is still there, and nothing that is done to it does anything.
TEST_F(TimersTest, WithoutAnEngineItOffersThreeSpeedsAndDoesNothing) {
  App();
  const UiThread host;
  CDlgController* dialog = nullptr;
  host.Do([&] {
    INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
    InitCommonControlsEx(&classes);
    dialog = new CDlgController(nullptr, "", "", nullptr);
    dialog->HoldByCaller();
    ASSERT_TRUE(dialog->COrlDialog::Create());
  });
  HWND window = WaitForDialogWith(kNorth);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(SendDlgItemMessageW(window, kSlider, TBM_GETPOS, 0, 0), 2);
  EXPECT_THAT(timers, ElementsAre(Pair(1000, 100)));
  SendMessageW(window, WM_TIMER, 1000, 0);
  for (const int id : {3019, 3018, 3021})
    SendMessageW(window, WM_COMMAND, static_cast<WPARAM>(id), 0);
  EXPECT_TRUE(IsEnabled(window, kNorth));
  host.Do([&] {
    dialog->CloseFromAnyThread();
    dialog->Release();
  });
  EXPECT_FALSE(IsWindow(window));
}

}  // namespace
