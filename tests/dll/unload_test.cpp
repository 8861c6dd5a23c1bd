// SPDX-License-Identifier: MIT
// Hosts that leave without ending their session, each a process of its own (session_host.cpp).
#include <gtest/gtest.h>
#include <windows.h>

#include <filesystem>
#include <string>

#include "simulator/scripted_controller.h"
#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;

constexpr DWORD kHung = 0xDEAD;

// @return the program's exit code, or kHung when it had to be ended.
DWORD Run(const std::wstring& program, const std::wstring& arguments, DWORD limitMs = 30'000) {
  wchar_t own[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, own, MAX_PATH);
  const auto path = std::filesystem::path(own).parent_path() / program;
  std::wstring line = L"\"" + path.wstring() + L"\" " + arguments;
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                      &process)) {
    ADD_FAILURE() << "cannot run the host: " << GetLastError();
    return kHung;
  }
  DWORD code = kHung;
  if (WaitForSingleObject(process.hProcess, limitMs) == WAIT_OBJECT_0) {
    GetExitCodeProcess(process.hProcess, &code);
  } else {
    TerminateProcess(process.hProcess, kHung);
    WaitForSingleObject(process.hProcess, limitMs);
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code;
}

class Unloading : public testing::Test {
 protected:
  Unloading() { controller.LooksLikeAMount(); }

  DWORD RunHost(const std::wstring& way, int count = 1) {
    const std::string& address = controller.Address();
    return Run(L"session_host.exe", way + L" " + std::wstring(address.begin(), address.end()) +
                                        L" " + std::to_wstring(count));
  }

  simulator::ScriptedController controller;
};

TEST_F(Unloading, KeepsTheLibraryUnderARunningWorker) {
  EXPECT_EQ(RunHost(L"unload"), 0u);
  EXPECT_GE(controller.CountOf("$MTSTA?"), 3);
}

TEST_F(Unloading, LetsTheHostEndTheSessionWhenItLoadsTheLibraryAgain) {
  EXPECT_EQ(RunHost(L"reload"), 0u);
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3);
}

TEST_F(Unloading, LetsAProcessEndWithASessionRunning) {
  EXPECT_EQ(RunHost(L"exit"), 0u);
  EXPECT_EQ(RunHost(L"exit-at-once"), 0u);
}

TEST_F(Unloading, LetsAProcessEndAgainAndAgainWithASessionRunning) {
  // The worker is stopped wherever it happens to be, perhaps with a lock held.
  for (int i = 0; i < 20; ++i) ASSERT_EQ(RunHost(L"exit"), 0u) << i;
}

TEST_F(Unloading, LetsAProcessEndWhileAMessageWaits) {
  EXPECT_EQ(RunHost(L"exit-during-box"), 0u);
}

TEST_F(Unloading, LetsAProcessEndWhileItStarts) {
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(RunHost(L"exit-during-start"), 0u);
}

TEST_F(Unloading, LetsAProcessEndWithTheHandControllerOpen) {
  EXPECT_EQ(RunHost(L"exit-with-window"), 0u);
}

TEST_F(Unloading, ClosesTheHandControllerWithTheLibrary) {
  EXPECT_EQ(RunHost(L"unload-with-window"), 0u);
}

TEST_F(Unloading, LeavesNothingBehindInFiftySessions) {
  EXPECT_EQ(RunHost(L"cycle", 50), 0u);
  EXPECT_EQ(controller.CountOf("$MTMDL?"), 50);
}

TEST(ImportLibrary, LinksAHost) {
  EXPECT_EQ(Run(L"import_library_host.exe", L""), 0u);
}

}  // namespace
