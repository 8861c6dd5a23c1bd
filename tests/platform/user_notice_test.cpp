// SPDX-License-Identifier: MIT
#include "platform/user_notice.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

TEST(StringResource, IsCopiedWithItsLength) {
  char buffer[64];
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(platform::LoadStringResource(57344, buffer, sizeof buffer), 7);
  EXPECT_STREQ(buffer, "VELQUIN");
  EXPECT_EQ(buffer[8], '#');
}

TEST(StringResource, IsCutToTheBuffer) {
  char buffer[64];
  std::memset(buffer, '#', sizeof buffer);
  EXPECT_EQ(platform::LoadStringResource(57344, buffer, 4), 3);
  EXPECT_STREQ(buffer, "VEL");
  EXPECT_EQ(buffer[4], '#');
  EXPECT_EQ(platform::LoadStringResource(57344, buffer, 8), 7);
  EXPECT_STREQ(buffer, "VELQUIN");
}

TEST(StringResource, IsEmptyWhenThereIsNone) {
  char buffer[64] = "before";
  EXPECT_EQ(platform::LoadStringResource(4711, buffer, sizeof buffer), 0);
  EXPECT_STREQ(buffer, "");
}

#ifdef _WIN32

TEST(BusyPointer, IsShownUntilThePointerBeforeIsRestored) {
  const HCURSOR arrow = LoadCursorW(nullptr, MAKEINTRESOURCEW(32512));
  const HCURSOR busy = LoadCursorW(nullptr, MAKEINTRESOURCEW(32514));
  SetCursor(arrow);
  void* before = platform::ShowBusyPointer();
  EXPECT_EQ(before, arrow);
  EXPECT_EQ(GetCursor(), busy);
  platform::RestorePointer(before);
  EXPECT_EQ(GetCursor(), arrow);
}

#else

TEST(MessageBoxWithoutADesktop, GoesToStandardErrorAndIsAnsweredAtOnce) {
  testing::internal::CaptureStderr();
  const int answer = platform::ShowMessageBox("100% lost", "VELQUIN", 0x31);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "VELQUIN: 100% lost\n");
  EXPECT_EQ(answer, 1);
}

#endif
