// SPDX-License-Identifier: MIT
#include "core/util/truncate.h"

#include <gtest/gtest.h>

#include <limits>

TEST(TruncateToInt32, CutsTowardZero) {
  EXPECT_EQ(TruncateToInt32(0.0), 0);
  EXPECT_EQ(TruncateToInt32(4.999999), 4);
  EXPECT_EQ(TruncateToInt32(-4.999999), -4);
  EXPECT_EQ(TruncateToInt32(-0.5), 0);
}

TEST(TruncateToInt32, KeepsTheOutermostNumbers) {
  EXPECT_EQ(TruncateToInt32(2147483647.0), 2147483647);
  EXPECT_EQ(TruncateToInt32(2147483646.9), 2147483646);
  EXPECT_EQ(TruncateToInt32(-2147483648.0), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(TruncateToInt32(-2147483647.9), -2147483647);
}

TEST(TruncateToInt32, StopsAtTheBounds) {
  EXPECT_EQ(TruncateToInt32(2147483648.0), 2147483647);
  EXPECT_EQ(TruncateToInt32(-2147483649.0), std::numeric_limits<int32_t>::min());
  EXPECT_EQ(TruncateToInt32(1e300), 2147483647);
  EXPECT_EQ(TruncateToInt32(-std::numeric_limits<double>::infinity()),
            std::numeric_limits<int32_t>::min());
}

TEST(TruncateToInt32, MakesZeroOfNoNumber) {
  EXPECT_EQ(TruncateToInt32(std::numeric_limits<double>::quiet_NaN()), 0);
}
