// SPDX-License-Identifier: MIT
#include "framework/base/wait_cursor.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/framework/fake_platform.h"

TEST(WaitCursor, ShowsTheBusyPointerForTheLengthOfABlock) {
  FakePlatform system;
  int arrow = 0;
  system.pointer = &arrow;
  {
    const CWaitCursor busy;
    EXPECT_EQ(system.busyPointers, 1);
    EXPECT_TRUE(system.restoredPointers.empty());
  }
  EXPECT_EQ(system.busyPointers, 1);
  EXPECT_THAT(system.restoredPointers, testing::ElementsAre(&arrow));
}
