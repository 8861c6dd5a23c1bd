// SPDX-License-Identifier: MIT
// Hosts that leave without ending their session, each a process of its own (session_host.cpp).
#include <gtest/gtest.h>
#include <windows.h>

#include <string>
#include <vector>

#include "simulator/scripted_controller.h"

namespace {

constexpr DWORD kHung = 0xDEAD;

// @return the program's exit code, or kHung when it had to be ended.
DWORD RunProgram(const std::string& program, const std::vector<std::string>& arguments) {
  constexpr DWORD kLimitMs = 30'000;
  char own[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, own, MAX_PATH);
  std::string line = own;
  line.resize(line.find_last_of('\\') + 1);
  line.insert(0, 1, '"');
  line.append(program).push_back('"');
  for (const std::string& argument : arguments) {
    line.push_back(' ');
    line.append(argument);
  }
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process)) {
    ADD_FAILURE() << "cannot run the host: " << GetLastError();
    return kHung;
  }
  DWORD code = kHung;
  if (WaitForSingleObject(process.hProcess, kLimitMs) == WAIT_OBJECT_0) {
    GetExitCodeProcess(process.hProcess, &code);
  } else {
    TerminateProcess(process.hProcess, kHung);
    WaitForSingleObject(process.hProcess, kLimitMs);
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code;
}

class Unloading : public testing::Test {
 protected:
  Unloading() { controller.LooksLikeAMount(); }

  DWORD RunHost(const std::string& way, int count = 1) {
    return RunProgram("session_host.exe", {way, controller.Address(), std::to_string(count)});
  }

  simulator::ScriptedController controller;
};

TEST_F(Unloading, KeepsTheLibraryUnderARunningWorker) {
  EXPECT_EQ(RunHost("unload"), 0u);
  EXPECT_GE(controller.CountOf("$MTSTA?"), 3);
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

TEST_F(Unloading, LeavesNothingBehindInFiftySessions) {
  EXPECT_EQ(RunHost("cycle", 50), 0u);
  EXPECT_EQ(controller.CountOf("$MTMDL?"), 50);
}

TEST(ImportLibrary, LinksAHost) {
  EXPECT_EQ(RunProgram("import_library_host.exe", {}), 0u);
}

}  // namespace
