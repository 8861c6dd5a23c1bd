// SPDX-License-Identifier: MIT
// Hosts that load, unload and end in every order; each is a process of its own.
#include <windows.h>

#include <gmock/gmock.h>

#include <string>

#include "simulator/scripted_controller.h"

namespace {

class Unloading : public testing::Test {
 protected:
  Unloading() { controller.LooksLikeAMount(); }

  /// Runs the host. @return its exit code; -1 when it had to be ended after the time limit.
  int Run(const std::string& what, DWORD limitMs) {
    std::string line = "dll_test_host.exe " + what + " ";
    line.append(controller.Address());
    STARTUPINFOA startup = {};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process = {};
    if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
      return -2;
    }
    DWORD code = static_cast<DWORD>(-1);
    if (WaitForSingleObject(process.hProcess, limitMs) == WAIT_OBJECT_0) {
      GetExitCodeProcess(process.hProcess, &code);
    } else {
      TerminateProcess(process.hProcess, 99);
    }
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
  }

  simulator::ScriptedController controller;
};

TEST_F(Unloading, WithoutEndNeitherCrashesNorHangs) {
  EXPECT_EQ(Run("free-without-end", 20'000), 0);
  EXPECT_TRUE(controller.Saw("$MTSTA?"));
}

TEST_F(Unloading, ASessionLeftRunningCanBeEndedAfterLoadingAgain) {
  EXPECT_EQ(Run("end-after-loading-again", 20'000), 0);
}

TEST_F(Unloading, AProcessMayEndWithTheSessionRunning) {
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Run("exit-while-running", 20'000), 0);
}

TEST_F(Unloading, FiftySessionsEachInAFreshlyLoadedLibrary) {
  EXPECT_EQ(Run("many-sessions", 60'000), 0);
}

TEST_F(Unloading, ALoadGivesBackWhatItTakes) {
  EXPECT_EQ(Run("many-loads", 60'000), 0);
}

}  // namespace
