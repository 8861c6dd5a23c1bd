// SPDX-License-Identifier: MIT
// What a mount is doing, judged from two readings.
#include "console/mount_motion.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

constexpr double kSecond = 1.0;
constexpr double kSidereal = 15.04 / 3600.0;

MountMotion After(double raDegrees, double decDegrees, double seconds = kSecond) {
  return MotionBetween({90.0, 20.0}, {90.0 + raDegrees, 20.0 + decDegrees}, seconds);
}

TEST(MountMotion, CoordinatesThatStayAreTracking) {
  EXPECT_EQ(After(0.0, 0.0), MountMotion::kTracking);
  EXPECT_EQ(After(5e-5, -5e-5), MountMotion::kTracking) << "rounding";
}

TEST(MountMotion, TheSkysTurningIsNoTracking) {
  EXPECT_EQ(After(kSidereal, 0.0), MountMotion::kStanding);
  EXPECT_EQ(After(-kSidereal, 0.0), MountMotion::kMoving) << "the other way";
  EXPECT_EQ(After(kSidereal, kSidereal), MountMotion::kMoving);
}

TEST(MountMotion, FourDegreesASecondIsASlewOnEitherAxis) {
  for (const double speed : {4.0, -4.0, 0.2}) {
    EXPECT_EQ(After(speed, 0.0), MountMotion::kSlewing) << speed;
    EXPECT_EQ(After(0.0, speed), MountMotion::kSlewing) << speed;
  }
  EXPECT_EQ(After(2.0, 0.0, 0.5), MountMotion::kSlewing);
  EXPECT_EQ(After(0.1, 0.0), MountMotion::kMoving) << "a hand move";
}

TEST(MountMotion, GoesTheShortWayRound) {
  EXPECT_EQ(MotionBetween({359.99999, 0.0}, {0.00001, 0.0}, kSecond), MountMotion::kTracking);
  EXPECT_NEAR(RaMovedDegrees({359.0, 0.0}, {1.0, 0.0}), 2.0, 1e-9);
  EXPECT_NEAR(RaMovedDegrees({1.0, 0.0}, {359.0, 0.0}), -2.0, 1e-9);
  EXPECT_NEAR(SpeedBetween({359.0, 0.0}, {1.0, 0.5}, 2.0), 1.0, 1e-9);
}

TEST(MovedText, TellsTheDirectionOfEachCoordinate) {
  EXPECT_EQ(MovedText({90.0, 20.0}, {88.5, 20.0 + 8.3 / 3600}),
            "right ascension -1.50\u00b0, declination +8.3\"");
  EXPECT_EQ(MovedText({90.0, 20.0}, {90.0, 20.0}), "right ascension +0.0\", declination +0.0\"");
}

}  // namespace
}  // namespace velquinctl
