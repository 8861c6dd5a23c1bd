// SPDX-License-Identifier: MIT
// The hand controller of the built library, worked by window messages and seen from the mount.
#include "tests/library/ui/driver_host.h"

namespace {

using namespace ui_test;
using namespace std::chrono_literals;

using HandController = DriverHost;

TEST_F(HandController, HoldingNorthMovesTheMountUntilItIsLetGo) {
  Connect();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kNorth));
  mount.Clear();
  HWND north = GetDlgItem(window, kNorth);
  SendMessageW(north, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
  // The full rate, as the slider opens at its fast end.
  const std::string push = "$MTMV2=1.000000,0.000000,200.000000";
  ASSERT_TRUE(mount.WaitForCount(push, 10, 5000));
  SendMessageW(north, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
  // The release is not sent, as the controller ends the move by itself; but no push follows either.
  Eventually([] { return false; }, 250ms);
  const int pushes = mount.CountOf(push);
  EXPECT_FALSE(mount.WaitForCount(push, pushes + 1, 500));
  const auto received = mount.Received();
  double first = 0.0;
  double last = 0.0;
  for (const auto& datagram : received) {
    if (datagram.text != push) continue;
    if (first == 0.0) first = datagram.timeMs;
    last = datagram.timeMs;
  }
  EXPECT_NEAR((last - first) / (pushes - 1), 100.0, 40.0);  // ms from push to push
}

TEST_F(HandController, EachDirectionMovesItsOwnWay) {
  Connect();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kWest));
  const std::pair<int, const char*> cases[] = {{kNorth, "$MTMV2=1.000000,0.000000,200.000000"},
                                               {kSouth, "$MTMV2=1.000000,0.000000,-200.000000"},
                                               {kEast, "$MTMV2=1.000000,200.000000,0.000000"},
                                               {kWest, "$MTMV2=1.000000,-200.000000,0.000000"}};
  for (const auto& [id, command] : cases) {
    SendDlgItemMessageW(window, id, BM_SETSTATE, TRUE, 0);
    EXPECT_TRUE(mount.WaitFor(command, 3000)) << command;
    SendDlgItemMessageW(window, id, BM_SETSTATE, FALSE, 0);
  }
}

TEST_F(HandController, WhileDisconnectedOnlyHomeIsEnabled) {
  SetTarget();
  OpenWindow();
  // The last one that a tick disables.
  ASSERT_TRUE(WaitEnabled(kStop, false));
  for (const int id : {kNorth, kSouth, kEast, kWest, kStop, kGoto, kSync})
    EXPECT_FALSE(IsEnabled(window, id)) << id;
  EXPECT_TRUE(IsEnabled(window, kHome));
}

TEST_F(HandController, GotoAndSyncWaitForATarget) {
  Connect();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kGoto, false));
  EXPECT_FALSE(IsEnabled(window, kSync));
  for (const int id : {kNorth, kSouth, kEast, kWest, kStop, kHome})
    EXPECT_TRUE(IsEnabled(window, id)) << id;
  SetTarget();
  EXPECT_TRUE(WaitEnabled(kGoto));
  EXPECT_TRUE(WaitEnabled(kSync));
}

TEST_F(HandController, GotoGoesToTheTargetWithoutAsking) {
  Connect();
  SetTarget();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kGoto));
  Click(window, kGoto);
  EXPECT_TRUE(mount.WaitFor("$MTTGT=", 3000));
  EXPECT_EQ(FindDialogWith(kMessageText), nullptr);
}

TEST_F(HandController, SyncAsksFirst) {
  RaiseSyncQuestion();
  EXPECT_EQ(TextOf(box, kMessageText), L"同期します。\n");
  EXPECT_TRUE(IsWindowVisible(GetDlgItem(box, IDCANCEL)));
  EXPECT_EQ(GetWindow(box, GW_OWNER), window);
  EXPECT_FALSE(IsWindowEnabled(window));
  EXPECT_TRUE(IsWindowEnabled(host.Window()));
  EXPECT_FALSE(mount.Saw("$ALIGN="));
  Click(box, IDOK);
  EXPECT_TRUE(WaitUntilGone(box));
  EXPECT_TRUE(IsWindowEnabled(window));
  host.Do([&] { EXPECT_EQ(GetActiveWindow(), window); });
  EXPECT_TRUE(mount.WaitFor("$ALIGN=", 3000));
}

TEST_F(HandController, ASyncCancelledByEscSendsNothing) {
  RaiseSyncQuestion();
  PressKey(GetDlgItem(box, IDOK), VK_ESCAPE);
  EXPECT_TRUE(WaitUntilGone(box));
  EXPECT_TRUE(Quiet("$ALIGN="));
}

TEST_F(HandController, ASyncCancelledByItsButtonSendsNothing) {
  RaiseSyncQuestion();
  Click(box, IDCANCEL);
  EXPECT_TRUE(WaitUntilGone(box));
  EXPECT_TRUE(IsWindowEnabled(window));
  EXPECT_TRUE(Quiet("$ALIGN="));
}

TEST_F(HandController, StopAndHomeGoStraightToTheMount) {
  Connect();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kStop));
  Click(window, kStop);
  EXPECT_TRUE(mount.WaitFor("$MTSTP=1", 3000));
  mount.Clear();
  Click(window, kHome);
  EXPECT_TRUE(mount.WaitFor("$MTTGT=", 3000));
}

TEST_F(HandController, EnterOnAFocusedButtonIsAClick) {
  Connect();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kStop));
  HWND stop = GetDlgItem(window, kStop);
  host.Do([&] {
    SetActiveWindow(window);
    SetFocus(stop);
  });
  PressKey(stop, VK_RETURN);
  EXPECT_TRUE(mount.WaitFor("$MTSTP=1", 3000));
}

TEST_F(HandController, ItsCaptionIsTheNameOrVelquin) {
  OpenWindow();
  EXPECT_EQ(TextOf(window), L"VELQUIN");
  dll.SetName(nullptr, "My Observatory");
  OpenWindow();
  EXPECT_EQ(TextOf(window), L"My Observatory");
  dll.SetName(nullptr, "");
  OpenWindow();
  EXPECT_EQ(TextOf(window), L"VELQUIN");
}

TEST_F(HandController, OpeningAgainReplacesTheWindow) {
  OpenWindow();
  HWND first = window;
  OpenWindow();
  EXPECT_NE(window, first);
  EXPECT_FALSE(IsWindow(first));
  EXPECT_EQ(OpenDialogs().size(), 1u);
}

TEST_F(HandController, TheHostsWindowOwnsItDuringASession) {
  Connect();
  OpenWindow();
  EXPECT_EQ(GetWindow(window, GW_OWNER), host.Window());
}

TEST_F(HandController, TheCloseBoxOnlyHidesIt) {
  OpenWindow();
  PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_TRUE(WaitUntilHidden(window));
  EXPECT_TRUE(IsWindow(window));
}

TEST_F(HandController, EscOnlyHidesIt) {
  OpenWindow();
  PressKey(GetDlgItem(window, kHome), VK_ESCAPE);
  EXPECT_TRUE(WaitUntilHidden(window));
  EXPECT_TRUE(IsWindow(window));
}

// A button that had the focus is disabled when the connection ends; keys are system keys then.
TEST_F(HandController, EscHidesItAlsoWithoutAFocus) {
  OpenWindow();
  PostMessageW(window, WM_SYSKEYDOWN, VK_ESCAPE, 1);
  EXPECT_TRUE(WaitUntilHidden(window));
}

TEST_F(HandController, AltEscIsTheSystems) {
  OpenWindow();
  PostMessageW(window, WM_SYSKEYDOWN, VK_ESCAPE, 0x20000001);
  host.HandlePosted();
  host.HandlePosted();  // a key that counts would be a command by now
  EXPECT_TRUE(IsWindowVisible(window));
}

TEST_F(HandController, AHiddenWindowIsReplacedAtTheNextOpening) {
  OpenWindow();
  HWND first = window;
  PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  ASSERT_TRUE(WaitUntilHidden(window));
  OpenWindow();
  EXPECT_TRUE(IsWindowVisible(window));
  EXPECT_FALSE(IsWindow(first));
}

TEST_F(HandController, TheEndOfTheConnectionDestroysIt) {
  Connect();
  OpenWindow();
  host.Do([&] {
    dll.End(nullptr);
    EXPECT_FALSE(IsWindow(window));
  });
}

TEST_F(HandController, HidingDestroysIt) {
  OpenWindow();
  host.Do([&] {
    dll.Dialog(nullptr, 0);
    EXPECT_FALSE(IsWindow(window));
  });
}

TEST_F(HandController, AHostsWindowThatGoesTakesItAlong) {
  HWND owner = nullptr;
  host.Do([&] {
    owner = CreateWindowExW(0, L"VelquinTestHost", L"", WS_POPUP, 0, 0, 9, 9, nullptr, nullptr,
                            GetModuleHandleW(nullptr), nullptr);
    ASSERT_EQ(dll.Start(owner, mount.Address().c_str(), nullptr, 0), 1);
  });
  OpenWindow();
  host.Do([&] { DestroyWindow(owner); });
  EXPECT_FALSE(IsWindow(window));
  OpenWindow();  // the object of the lost window does no harm
}

}  // namespace
