// SPDX-License-Identifier: MIT
// The records that cross the library's boundary: every offset is part of the interface.
#include <gtest/gtest.h>

#include <cstddef>

#include "include/telescope_api.h"
#include "include/velquin_util.h"
#include "tests/core/util/headers_in_c.h"

TEST(HourMinSecRecord, IsTwoIntegersAndADouble) {
  EXPECT_EQ(sizeof(HourMinSec), 16u);
  EXPECT_EQ(offsetof(HourMinSec, nHour), 0u);
  EXPECT_EQ(offsetof(HourMinSec, nMin), 4u);
  EXPECT_EQ(offsetof(HourMinSec, dSec), 8u);
}

TEST(SiteTimeRecord, Has40BytesWithAlignmentBeforeTheSecond) {
  EXPECT_EQ(sizeof(SiteTime), 40u);
  EXPECT_EQ(offsetof(SiteTime, year), 0u);
  EXPECT_EQ(offsetof(SiteTime, month), 4u);
  EXPECT_EQ(offsetof(SiteTime, day), 8u);
  EXPECT_EQ(offsetof(SiteTime, hour), 12u);
  EXPECT_EQ(offsetof(SiteTime, minute), 16u);
  EXPECT_EQ(offsetof(SiteTime, second), 24u);
  EXPECT_EQ(offsetof(SiteTime, zone), 32u);
}

TEST(SiteLocationRecord, IsThreeDoubles) {
  EXPECT_EQ(sizeof(SiteLocation), 24u);
  EXPECT_EQ(offsetof(SiteLocation, latitude), 0u);
  EXPECT_EQ(offsetof(SiteLocation, longitude), 8u);
  EXPECT_EQ(offsetof(SiteLocation, third), 16u);
}

TEST(HostHeaders, MeanTheSameInC) {
  EXPECT_EQ(SizeOfHourMinSecInC(), 16);
  EXPECT_EQ(SizeOfSiteTimeInC(), 40);
  EXPECT_EQ(SizeOfSiteLocationInC(), 24);
  EXPECT_EQ(ModernEpochFromC(), 20000101.5);
  EXPECT_NEAR(FoldedSecondsFromC(), 1800.0, 1e-6);
}
