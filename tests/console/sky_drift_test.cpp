// SPDX-License-Identifier: MIT
// Told apart from motion: the sky that passes over a mount at rest.
#include "console/sky_drift.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

constexpr double kDriftOfTwoSeconds = 2 * 15.041 / 3600;

TEST(SkyDrift, IsASecondOfTimeInASecond) {
  EXPECT_TRUE(IsSkyDrift({100, 60}, {100 + kDriftOfTwoSeconds, 60}, 2.0));
}

TEST(SkyDrift, GoesOnPastTheEndOfTheCircle) {
  EXPECT_TRUE(IsSkyDrift({359.999, -10}, {359.999 + kDriftOfTwoSeconds - 360, -10}, 2.0));
}

TEST(SkyDrift, IsNothingOnAMountThatTracks) {
  EXPECT_TRUE(IsSkyDrift({100, 60}, {100, 60}, 2.0));
}

TEST(SkyDrift, IsNoMotionToTheWest) {
  EXPECT_FALSE(IsSkyDrift({100, 60}, {100 - kDriftOfTwoSeconds, 60}, 2.0));
}

TEST(SkyDrift, IsNoMotionInDeclination) {
  EXPECT_FALSE(IsSkyDrift({100, 60}, {100, 60.001}, 2.0));
  EXPECT_FALSE(IsSkyDrift({100, 60}, {100, 59.999}, 2.0));
}

TEST(SkyDrift, IsNoFasterMotionToTheEast) {
  EXPECT_FALSE(IsSkyDrift({100, 60}, {100 + 3 * kDriftOfTwoSeconds, 60}, 2.0));
}

}  // namespace
}  // namespace velquinctl
