// SPDX-License-Identifier: MIT
// velquinctl dialog: the hand controller as a user of the shell meets it. The window belongs to
// another process, so it is worked by posted messages.
#include <gmock/gmock.h>
#include <windows.h>

#include "tests/console/mount_fixture.h"
#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;

constexpr int kNorth = 3010;
constexpr int kGoto = 3019;
constexpr int kSync = 3020;
constexpr int kMessageText = 10001;

struct Wanted {
  int controlId;
  HWND found;
};

BOOL CALLBACK Look(HWND window, LPARAM parameter) {
  auto& wanted = *reinterpret_cast<Wanted*>(parameter);
  char name[16] = {};
  GetClassNameA(window, name, sizeof name);
  if (std::string(name) != "#32770" || !IsWindowVisible(window)) return TRUE;
  if (GetDlgItem(window, wanted.controlId) == nullptr) return TRUE;
  wanted.found = window;
  return FALSE;
}

HWND WaitForDialogWith(int controlId) {
  Wanted wanted = {controlId, nullptr};
  Eventually(
      [&] {
        EnumWindows(&Look, reinterpret_cast<LPARAM>(&wanted));
        return wanted.found != nullptr;
      },
      20s);
  return wanted.found;
}

void Press(HWND dialog, int controlId, bool down) {
  PostMessageW(GetDlgItem(dialog, controlId), down ? WM_LBUTTONDOWN : WM_LBUTTONUP,
               down ? MK_LBUTTON : 0, MAKELPARAM(3, 3));
}

void Click(HWND dialog, int controlId) {
  Press(dialog, controlId, true);
  Press(dialog, controlId, false);
}

bool WaitEnabled(HWND dialog, int controlId) {
  return Eventually([=] { return IsWindowEnabled(GetDlgItem(dialog, controlId)) != FALSE; }, 10s);
}

TEST_F(VelquinctlTest, DialogShowsTheHandControllerUntilItsCloseBox) {
  VelquinctlRun run({"dialog", Address()});
  HWND window = WaitForDialogWith(kNorth);
  ASSERT_NE(window, nullptr);
  PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_EQ(result.out, "hand controller closed\n");
}

TEST_F(VelquinctlTest, DialogEndsWithEsc) {
  VelquinctlRun run({"dialog", Address(), "--json"});
  HWND window = WaitForDialogWith(kNorth);
  ASSERT_NE(window, nullptr);
  PostMessageW(window, WM_KEYDOWN, VK_ESCAPE, 1);
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_EQ(Json(result)["ok"], true);
}

TEST_F(VelquinctlTest, DialogEndsWithCtrlC) {
  VelquinctlRun run({"dialog", Address()});
  ASSERT_NE(WaitForDialogWith(kNorth), nullptr);
  if (!run.Interrupt()) GTEST_FAIL() << "no way to press Ctrl-Break here";
  EXPECT_EQ(run.Wait().exitCode, 130);
}

TEST_F(VelquinctlTest, TheWindowOfDialogDrivesTheMount) {
  VelquinctlRun run({"dialog", Address(), "5h34m31.9s", "+22d00m52s"});
  HWND window = WaitForDialogWith(kNorth);
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(WaitEnabled(window, kNorth));
  Press(window, kNorth, true);
  EXPECT_TRUE(Eventually([&] { return mount.Saw("$MTMV2=1.000000,0.000000,200.000000"); }, 5s));
  Press(window, kNorth, false);
  ASSERT_TRUE(WaitEnabled(window, kGoto));
  Click(window, kGoto);
  EXPECT_TRUE(Eventually([&] { return mount.State() == 2; }, 5s));
  PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_EQ(run.Wait().exitCode, 0);
}

// Unlike those of other commands: somebody sits in front of the window.
TEST_F(VelquinctlTest, QuestionsOfTheWindowAreLeftToTheUser) {
  VelquinctlRun run({"dialog", Address(), "5h34m31.9s", "+22d00m52s"});
  HWND window = WaitForDialogWith(kNorth);
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(WaitEnabled(window, kSync));
  Click(window, kSync);
  HWND box = WaitForDialogWith(kMessageText);
  ASSERT_NE(box, nullptr);
  EXPECT_FALSE(Eventually([&] { return !IsWindow(box); }, 500ms));
  Click(box, IDCANCEL);
  EXPECT_TRUE(Eventually([&] { return !IsWindow(box); }, 5s));
  PostMessageW(window, WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_EQ(run.Wait().exitCode, 0);
}

TEST_F(VelquinctlTest, CtrlCClosesAQuestionOfTheWindowToo) {
  VelquinctlRun run({"dialog", Address(), "5h34m31.9s", "+22d00m52s"});
  HWND window = WaitForDialogWith(kNorth);
  ASSERT_NE(window, nullptr);
  ASSERT_TRUE(WaitEnabled(window, kSync));
  Click(window, kSync);
  ASSERT_NE(WaitForDialogWith(kMessageText), nullptr);
  if (!run.Interrupt()) GTEST_FAIL() << "no way to press Ctrl-Break here";
  EXPECT_EQ(run.Wait().exitCode, 130);
}

TEST_F(VelquinctlTest, HalfATargetForTheWindowIsWrongUsage) {
  const ProgramResult result = RunVelquinctl({"dialog", Address(), "5h34m31.9s"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.error, HasSubstr("RA and DEC"));
}

}  // namespace
