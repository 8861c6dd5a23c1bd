// SPDX-License-Identifier: MIT
// Hosts that leave without ending their session, each a process of its own (session_host.cpp).
#include <gtest/gtest.h>

#include <string>
#include <thread>

#include "simulator/scripted_controller.h"
#include "tests/library/dll/run_program.h"
#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;

class Unloading : public testing::Test {
 protected:
  Unloading() { controller.LooksLikeAMount(); }

  DWORD RunHost(const std::string& way, int count = 1) {
    return RunProgram("session_host.exe", {way, controller.Address(), std::to_string(count)});
  }

  simulator::ScriptedController controller;
};

TEST_F(Unloading, KeepsTheLibraryUnderARunningWorker) {
  const HANDLE unloaded = CreateEventA(nullptr, TRUE, FALSE, "velquin_tests_unloaded");
  const HANDLE leave = CreateEventA(nullptr, TRUE, FALSE, "velquin_tests_leave");
  std::thread watcher([&] {
    EXPECT_EQ(WaitForSingleObject(unloaded, 20000), WAIT_OBJECT_0);
    const int polls = controller.CountOf("$MTSTA?");
    EXPECT_TRUE(Eventually([&] { return controller.CountOf("$MTSTA?") >= polls + 3; }, 8s));
    SetEvent(leave);
  });
  EXPECT_EQ(RunHost("unload"), 0u);
  watcher.join();
  CloseHandle(unloaded);
  CloseHandle(leave);
}

TEST_F(Unloading, LetsTheHostEndTheSessionWhenItLoadsTheLibraryAgain) {
  EXPECT_EQ(RunHost("reload"), 0u);
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3);
}

TEST_F(Unloading, LetsAProcessEndWithASessionRunning) {
  EXPECT_EQ(RunHost("exit"), 0u);
  EXPECT_EQ(RunHost("exit-at-once"), 0u);
}

TEST_F(Unloading, LetsAProcessEndAgainAndAgainWithASessionRunning) {
  // The worker is stopped wherever it happens to be, perhaps with a lock held.
  for (int i = 0; i < 20; ++i) ASSERT_EQ(RunHost("exit"), 0u) << i;
}

TEST_F(Unloading, LetsAProcessEndWhileAMessageWaits) {
  EXPECT_EQ(RunHost("exit-during-box"), 0u);
}

TEST_F(Unloading, LetsAProcessEndWhileItStarts) {
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(RunHost("exit-during-start"), 0u);
}

TEST_F(Unloading, LetsAProcessEndWithTheHandControllerOpen) {
  EXPECT_EQ(RunHost("exit-with-window"), 0u);
}

TEST_F(Unloading, ClosesTheHandControllerWithTheLibrary) {
  EXPECT_EQ(RunHost("unload-with-window"), 0u);
}

TEST_F(Unloading, LeavesNothingBehindInTwentySessions) {
  EXPECT_EQ(RunHost("cycle", 20), 0u);
  EXPECT_EQ(controller.CountOf("$MTMDL?"), 20);
}

TEST(ImportLibrary, LinksAHost) {
  EXPECT_EQ(RunProgram("import_library_host.exe", {}), 0u);
}

}  // namespace
