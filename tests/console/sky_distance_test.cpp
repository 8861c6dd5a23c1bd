// SPDX-License-Identifier: MIT
// Distances on the sky, against figures that can be had without the formula.
#include "console/sky_distance.h"

#include <gtest/gtest.h>

#include <cmath>

namespace velquinctl {
namespace {

TEST(SkyDistance, AlongTheEquatorAndTheMeridianIsADifference) {
  EXPECT_NEAR(SkyDistanceDegrees({10, 0}, {55, 0}), 45.0, 1e-12);
  EXPECT_NEAR(SkyDistanceDegrees({10, -20}, {10, 35}), 55.0, 1e-12);
}

TEST(SkyDistance, GoesTheShortWayRound) {
  EXPECT_NEAR(SkyDistanceDegrees({359, 0}, {2, 0}), 3.0, 1e-12);
  EXPECT_NEAR(SkyDistanceDegrees({2, 0}, {359, 0}), 3.0, 1e-12);
}

TEST(SkyDistance, IsAlwaysTheSameFromThePole) {
  for (double ra = 0; ra < 360; ra += 37)
    EXPECT_NEAR(SkyDistanceDegrees({0, 90}, {ra, 30}), 60, 1e-9);
}

TEST(SkyDistance, OfBetelgeuseAndRigelIsWhatAtlasesSay) {
  EXPECT_NEAR(SkyDistanceDegrees({88.792939, 7.407064}, {78.634467, -8.201638}), 18.6, 0.05);
}

TEST(SkyDistance, KeepsTinyAndOppositePairsApart) {
  EXPECT_NEAR(SkyDistanceDegrees({100, 60}, {100, 60 + 1e-7}), 1e-7, 1e-13);
  EXPECT_NEAR(SkyDistanceDegrees({100, 60}, {100 + 1e-7, 60}), 0.5e-7, 1e-13);
  EXPECT_NEAR(SkyDistanceDegrees({10, 40}, {190, -40}), 180.0, 1e-9);
  EXPECT_EQ(SkyDistanceDegrees({10, 40}, {10, 40}), 0.0);
}

TEST(AxisDistance, ShowsATurningAxisNearThePole) {
  EXPECT_NEAR(AxisDistanceDegrees({10, 89.9}, {50, 89.9}), 40.0, 1e-12);
  EXPECT_LT(SkyDistanceDegrees({10, 89.9}, {50, 89.9}), 0.1);
}

TEST(AxisDistance, GoesTheShortWayRound) {
  EXPECT_NEAR(AxisDistanceDegrees({359, 0}, {2, 1}), 3.0, 1e-12);
  EXPECT_NEAR(AxisDistanceDegrees({0, -10}, {1, 10}), 20.0, 1e-12);
}

}  // namespace
}  // namespace velquinctl
