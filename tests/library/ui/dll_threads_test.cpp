// SPDX-License-Identifier: MIT
// The windows of the built library where threads meet: ending the connection from another thread
// than the window's, and message boxes of the worker.
#include <atomic>

#include "tests/library/ui/driver_host.h"

namespace {

using namespace ui_test;
using namespace std::chrono_literals;

// Runs a call on a thread of its own and tells whether it returns in time.
class Call {
 public:
  explicit Call(std::function<void()> body)
      : done_(std::async(std::launch::async, std::move(body))) {}
  bool Returns() const { return done_.wait_for(10s) == std::future_status::ready; }
  bool IsWaiting() const { return done_.wait_for(300ms) == std::future_status::timeout; }

 private:
  std::future<void> done_;
};

using WindowThreads = DriverHost;

TEST_F(WindowThreads, EndOnAnotherThreadClosesTheWindow) {
  Connect();
  OpenWindow();
  const Call end([&] { dll.End(nullptr); });
  ASSERT_TRUE(end.Returns());
  EXPECT_TRUE(WaitUntilGone(window));
}

TEST_F(WindowThreads, HidingOnAnotherThreadClosesTheWindow) {
  OpenWindow();
  const Call hide([&] { dll.Dialog(nullptr, 0); });
  ASSERT_TRUE(hide.Returns());
  EXPECT_TRUE(WaitUntilGone(window));
}

TEST_F(WindowThreads, OpeningOnAnotherThreadReplacesTheWindow) {
  OpenWindow();
  HWND first = window;
  const UiThread other;
  other.Do([&] { dll.Dialog(nullptr, 1); });
  EXPECT_TRUE(WaitUntilGone(first));
  EXPECT_NE(WaitForDialogWith(kNorth, {first}), nullptr);
  other.Do([&] { dll.Dialog(nullptr, 0); });
}

// The window's thread is busy and handles no messages; nobody may wait for it.
TEST_F(WindowThreads, EndDoesNotWaitForABusyWindowThread) {
  Connect();
  OpenWindow();
  std::promise<void> release = KeepBusy();
  const Call end([&] { dll.End(nullptr); });
  EXPECT_TRUE(end.Returns());
  EXPECT_TRUE(IsWindow(window));
  release.set_value();
  EXPECT_TRUE(WaitUntilGone(window));
}

// The window's thread waits for the very call that closes the window.
TEST_F(WindowThreads, TheWindowThreadMayWaitForTheEnd) {
  Connect();
  OpenWindow();
  host.Do([&] {
    const Call end([&] { dll.End(nullptr); });
    EXPECT_TRUE(end.Returns());
  });
  EXPECT_TRUE(WaitUntilGone(window));
}

// The timer asks the engine for its lock ten times a second while the end holds it.
TEST_F(WindowThreads, EndMeetsTheTimerManyTimes) {
  for (int round = 0; round < 20; ++round) {
    Connect();
    OpenWindow();
    std::atomic<bool> stop = false;
    const Call ticking([&] {
      while (!stop) SendMessageTimeoutW(window, WM_TIMER, 1000, 0, SMTO_NORMAL, 1000, nullptr);
    });
    const Call end([&] { dll.End(nullptr); });
    EXPECT_TRUE(end.Returns());
    EXPECT_TRUE(WaitUntilGone(window));
    stop = true;
    EXPECT_TRUE(ticking.Returns());
  }
}

TEST_F(WindowThreads, AfterTheEndTheWindowDrivesNothing) {
  Connect();
  OpenWindow();
  std::promise<void> release = KeepBusy();
  BeginClick(kHome);  // waits in the queue of the busy thread
  const Call end([&] { dll.End(nullptr); });
  ASSERT_TRUE(end.Returns());
  mount.Clear();
  release.set_value();
  ASSERT_TRUE(WaitUntilGone(window));
  Connect();  // a command that was queued would be performed now
  EXPECT_TRUE(Quiet("$MTTGT="));
}

// The handler of the sync button is on the stack, below the question's own loop. The question goes
// with the window that it belongs to, and agreed to nothing.
TEST_F(WindowThreads, EndWhileTheSyncQuestionStandsThere) {
  for (const bool onWindowThread : {true, false}) {
    RaiseSyncQuestion();
    mount.Clear();
    if (onWindowThread) {
      host.Do([&] { dll.End(nullptr); });
    } else {
      const Call end([&] { dll.End(nullptr); });
      ASSERT_TRUE(end.Returns());
    }
    EXPECT_TRUE(WaitUntilGone(window));
    EXPECT_TRUE(WaitUntilGone(box));
    host.HandlePosted();
    Connect();
    EXPECT_TRUE(Quiet("$ALIGN="));
    host.Do([&] { dll.End(nullptr); });
  }
}

TEST_F(WindowThreads, TheLibraryIsUnloadedOnlyWhenTheWindowHasGone) {
  Connect();
  OpenWindow();
  std::promise<void> release = KeepBusy();
  const Call end([&] {
    dll.End(nullptr);
    dll.Unload();
  });
  ASSERT_TRUE(end.Returns());
  EXPECT_TRUE(DriverLibrary::IsLoaded());
  release.set_value();
  EXPECT_TRUE(WaitUntilGone(window));
  EXPECT_TRUE(Eventually([] { return !DriverLibrary::IsLoaded(); }, 5s));
}

TEST_F(WindowThreads, UnloadingTakesAnOpenWindowAlong) {
  OpenWindow();
  host.Do([&] { dll.Unload(); });
  EXPECT_FALSE(DriverLibrary::IsLoaded());
  EXPECT_FALSE(IsWindow(window));
}

TEST_F(WindowThreads, UnloadingOnAnotherThreadTakesAnOpenWindowAlong) {
  OpenWindow();
  dll.Unload();
  EXPECT_FALSE(DriverLibrary::IsLoaded());
  EXPECT_TRUE(WaitUntilGone(window));
}

// The slider's code went with the library, of which it was a part, and the window's thread, which
// had yet to take the slider down, ran into the gap and kept the system's loader locked.
TEST_F(WindowThreads, UnloadingLeavesTheSlidersCodeToABusyThread) {
  OpenWindow();
  std::promise<void> release = KeepBusy();
  dll.Unload();
  EXPECT_FALSE(DriverLibrary::IsLoaded());
  EXPECT_TRUE(IsWindow(window));
  EXPECT_NE(GetModuleHandleA("comctl32.dll"), nullptr);
  release.set_value();
  EXPECT_TRUE(WaitUntilGone(window));
}

// The window was just being painted when the library was unmapped: about one time in ten its thread
// came back to code that had gone. The second library is the one that is unloaded, again and again.
TEST_F(WindowThreads, UnloadingWaitsForThePaintingOfTheWindow) {
  dll.Unload();
  for (int round = 0; round < 40; ++round) {
    DriverLibrary again;
    host.Begin([&] { again.Dialog(host.Window(), 1); });
    window = WaitForDialogWith(kNorth);
    ASSERT_NE(window, nullptr);
    host.Do([] {});
    again.Unload();
    ASSERT_TRUE(WaitUntilGone(window)) << "round " << round;
    ASSERT_FALSE(DriverLibrary::IsLoaded()) << "round " << round;
  }
}

// A thread that ends takes its windows with it and tells nobody.
TEST_F(WindowThreads, TheWindowsThreadMayEndFirst) {
  {
    const UiThread brief;
    brief.Do([&] { dll.Dialog(nullptr, 1); });
    window = WaitForDialogWith(kNorth);
    ASSERT_NE(window, nullptr);
  }
  EXPECT_TRUE(WaitUntilGone(window));
  OpenWindow();
}

class WorkerBox : public DriverHost {
 protected:
  /// Has the worker say that a goto without a target was refused.
  void RaiseBox() {
    Connect();
    dll.Look(nullptr, nullptr);
    box = WaitForDialogWith(kMessageText);
    ASSERT_NE(box, nullptr);
  }
};

TEST_F(WorkerBox, BlocksTheWorkerOnly) {
  RaiseBox();
  EXPECT_EQ(TextOf(box, kMessageText),
            L"コマンドが受け付けられませんでした。\n"
            L"導入中の場合は、導入完了後に再度コマンドを実行してください。\n");
  EXPECT_EQ(GetWindow(box, GW_OWNER), nullptr);
  host.Do([&] {
    double radec[2] = {};
    dll.GetPos(nullptr, radec);
    dll.Dialog(nullptr, 1);
  });
  window = WaitForDialogWith(kNorth);
  ASSERT_NE(window, nullptr);
  EXPECT_TRUE(IsWindowEnabled(window));
  EXPECT_TRUE(IsWindowEnabled(host.Window()));
  mount.Clear();
  EXPECT_TRUE(Quiet("$MTSTA?"));
  Click(box, IDOK);
  EXPECT_TRUE(mount.WaitFor("$MTSTA?", 3000));
}

TEST_F(WorkerBox, EndReturnsOnceItIsAnswered) {
  RaiseBox();
  const Call end([&] { dll.End(nullptr); });
  EXPECT_TRUE(end.IsWaiting());
  Click(box, IDOK);
  EXPECT_TRUE(end.Returns());
}

// The host's only thread hangs in TelescopeEnd and handles no messages; the box must not need it.
TEST_F(WorkerBox, ItCanBeAnsweredWhileTheHostsWindowThreadWaitsInEnd) {
  RaiseBox();
  OpenWindow();
  std::promise<void> ended;
  host.Begin([&] {
    dll.End(nullptr);
    ended.set_value();
  });
  auto done = ended.get_future();
  EXPECT_EQ(done.wait_for(300ms), std::future_status::timeout);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_TRUE(IsWindowEnabled(box));
  Click(box, IDOK);
  EXPECT_EQ(done.wait_for(10s), std::future_status::ready);
}

// On the host's own thread the box is modal to the window that the person was in.
TEST_F(WorkerBox, ASilentControllerIsToldByTheStart) {
  mount.IsSilentTo("$SYVER?");
  int32_t started = -1;
  dll.SetName(nullptr, "My Observatory");
  host.Do([&] { SetActiveWindow(host.Window()); });
  host.Begin([&] { started = dll.Start(nullptr, mount.Address().c_str(), nullptr, 0); });
  box = WaitForDialogWith(kMessageText);
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(TextOf(box), L"My Observatory");
  EXPECT_EQ(TextOf(box, kMessageText),
            L"望遠鏡から応答がありません。\n"
            L"ポートの設定やケーブルの接続、電源の状態を確認してください。\n");
  EXPECT_EQ(GetWindow(box, GW_OWNER), host.Window());
  EXPECT_FALSE(IsWindowEnabled(host.Window()));
  Click(box, IDOK);
  EXPECT_TRUE(WaitUntilGone(box));
  host.HandlePosted();
  EXPECT_EQ(started, 0);
  EXPECT_TRUE(IsWindowEnabled(host.Window()));
}

}  // namespace
