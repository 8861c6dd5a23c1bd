// SPDX-License-Identifier: MIT
// Seeing from positions whether something moves.
#include "console/motion_watch.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

TEST(MotionWatch, KnowsNothingBeforeItsWindowIsFull) {
  MotionWatch watch(1.0);
  EXPECT_FALSE(watch.Full());
  watch.Add(10.0, {0, 0});
  watch.Add(10.9, {0, 0});
  EXPECT_FALSE(watch.Full());
  watch.Add(11.0, {0, 0});
  EXPECT_TRUE(watch.Full());
}

TEST(MotionWatch, SeesMotionWithinTheWindowOnly) {
  MotionWatch watch(1.0);
  watch.Add(0.0, {0, 0});
  watch.Add(0.5, {5, 0});
  EXPECT_NEAR(watch.SpreadDegrees(), 5.0, 1e-12);
  for (double t = 1.0; t < 2.6; t += 0.1) watch.Add(t, {5, 0});
  EXPECT_EQ(watch.SpreadDegrees(), 0.0);
}

TEST(MotionWatch, IsNotFooledByAWayThereAndBack) {
  MotionWatch watch(2.0);
  watch.Add(0.0, {0, 0});
  watch.Add(1.0, {0, 3});
  watch.Add(2.0, {0, 0});
  EXPECT_NEAR(watch.SpreadDegrees(), 3.0, 1e-12);
}

TEST(MotionWatch, StaysFullWhenLooksAreFarApart) {
  MotionWatch watch(1.0);
  for (double t = 0.0; t < 20.0; t += 3.0) watch.Add(t, {t, 0});
  EXPECT_TRUE(watch.Full());
  EXPECT_NEAR(watch.SpreadDegrees(), 3.0, 1e-12);
}

/// @return a watch over a second of a mount with these speeds, degrees per second.
MotionWatch Moving(double raSpeed, double decSpeed) {
  MotionWatch watch(1.0);
  for (int look = 0; look <= 15; ++look) {
    const double seconds = look / 10.0;
    watch.Add(seconds, {359.999 + raSpeed * seconds, 20.0 + decSpeed * seconds});
  }
  return watch;
}

TEST(MotionWatch, RestIsTrackingOrTheTurningSky) {
  constexpr double kSkyTurn = 360.0 / 86164.0;
  EXPECT_TRUE(Moving(0.0, 0.0).AtRest());
  EXPECT_FALSE(Moving(0.0, 0.0).Standing());
  EXPECT_TRUE(Moving(kSkyTurn, 0.0).AtRest());
  EXPECT_TRUE(Moving(kSkyTurn, 0.0).Standing());
  EXPECT_FALSE(Moving(-kSkyTurn, 0.0).AtRest());
  EXPECT_FALSE(Moving(0.0, 0.107).AtRest()) << "the slowest move by hand";
  EXPECT_FALSE(Moving(0.107, 0.0).AtRest());
}

TEST(MotionWatch, NothingRestsBeforeTheWindowIsFull) {
  MotionWatch watch(1.0);
  watch.Add(0.0, {0, 0});
  watch.Add(0.9, {0, 0});
  EXPECT_FALSE(watch.AtRest());
}

}  // namespace
}  // namespace velquinctl
