// SPDX-License-Identifier: MIT
// Waiting for a condition.
#include "tests/support/eventually.h"

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(Eventually, AsksOnceWhenTheConditionHoldsAlready) {
  int asked = 0;
  EXPECT_TRUE(Eventually([&] { return ++asked == 1; }, 0ms));
  EXPECT_EQ(asked, 1);
}

TEST(Eventually, WaitsUntilTheConditionHolds) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_TRUE(Eventually([&] { return std::chrono::steady_clock::now() - start > 30ms; }, 10s));
  EXPECT_LT(std::chrono::steady_clock::now() - start, 5s);
}

TEST(Eventually, GivesUpAtTheDeadline) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_FALSE(Eventually([] { return false; }, 30ms));
  EXPECT_GE(std::chrono::steady_clock::now() - start, 30ms);
}
