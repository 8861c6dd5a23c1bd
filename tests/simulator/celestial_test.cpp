// SPDX-License-Identifier: MIT
// The simulator's astronomy against figures from textbooks.
#include "simulator/celestial.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace simulator {
namespace {

double Seconds(double mjd) {
  return mjd * 86400.0;
}

double HoursMinutes(int hours, int minutes, double seconds) {
  return hours + minutes / 60.0 + seconds / 3600.0;
}

constexpr double kHundredthSecond = 0.01 / 3600.0;

TEST(Sidereal, AtGreenwichWhenTheEpochBegan) {
  EXPECT_NEAR(SiderealDegrees(Seconds(51544.5), 0.0) / 15.0, 18.697374558, 1e-9);
}

TEST(Sidereal, AtGreenwichOnTheTextbookDate) {  // 1987 April 10, at 0 h and at 19 h 21 min UT
  EXPECT_NEAR(SiderealDegrees(Seconds(46895.0), 0.0) / 15.0, HoursMinutes(13, 10, 46.3668),
              kHundredthSecond);
  EXPECT_NEAR(SiderealDegrees(Seconds(46895.80625), 0.0) / 15.0, HoursMinutes(8, 34, 57.0896),
              kHundredthSecond);
}

TEST(Sidereal, IsLaterInTheEast) {
  const double greenwich = SiderealDegrees(Seconds(51544.5), 0.0);
  EXPECT_NEAR(SiderealDegrees(Seconds(51544.5), 60.0), greenwich + 60.0, 1e-9);
  EXPECT_NEAR(SiderealDegrees(Seconds(51544.5), -60.0), greenwich - 60.0, 1e-9);
}

TEST(Sidereal, DayIsShorterThanTheSolarOne) {
  const double day = 86164.0905;
  EXPECT_NEAR(SiderealDegrees(Seconds(60000.0) + day, 0.0), SiderealDegrees(Seconds(60000.0), 0.0),
              0.01 / 3600.0);
}

TEST(Altitude, OfVenusOnTheTextbookDate) {  // from Washington, same moment as above
  const double latitude = 38.0 + 55.0 / 60.0 + 17.0 / 3600.0;
  EXPECT_NEAR(AltitudeDegrees(latitude, 64.352133, -6.719892), 15.1249, 0.0001);
}

TEST(Altitude, OfPolarisIsAboutTheLatitude) {
  const double polarisDec = 89.264109;
  double lowest = 90.0;
  double highest = 0.0;
  for (double hourAngle = 0.0; hourAngle < 360.0; hourAngle += 5.0) {
    const double altitude = AltitudeDegrees(35.681, hourAngle, polarisDec);
    lowest = std::min(lowest, altitude);
    highest = std::max(highest, altitude);
  }
  EXPECT_NEAR(lowest, 35.681 - 0.735891, 1e-6);
  EXPECT_NEAR(highest, 35.681 + 0.735891, 1e-6);
}

TEST(Altitude, OfTheCrabNebulaInTokyoChangesSignAtItsRisingAndSetting) {
  // Its half day arc is 106.88 degrees: acos(-tan 35.681 tan 22.0145).
  EXPECT_LT(AltitudeDegrees(35.681, -107.0, 22.0145), 0.0);
  EXPECT_GT(AltitudeDegrees(35.681, -106.7, 22.0145), 0.0);
  EXPECT_GT(AltitudeDegrees(35.681, 106.7, 22.0145), 0.0);
  EXPECT_LT(AltitudeDegrees(35.681, 107.0, 22.0145), 0.0);
  EXPECT_NEAR(AltitudeDegrees(35.681, 0.0, 22.0145), 90.0 - 35.681 + 22.0145, 1e-9);
}

TEST(Altitude, ReachesTheZenithAndTheNadir) {
  EXPECT_NEAR(AltitudeDegrees(40.0, 0.0, 40.0), 90.0, 1e-5);
  EXPECT_NEAR(AltitudeDegrees(40.0, 180.0, -40.0), -90.0, 1e-5);
}

TEST(WrapDegrees, KeepsToOneTurn) {
  EXPECT_EQ(WrapDegrees(0.0), 0.0);
  EXPECT_EQ(WrapDegrees(360.0), 0.0);
  EXPECT_EQ(WrapDegrees(-90.0), 270.0);
  EXPECT_EQ(WrapDegrees(725.0), 5.0);
  EXPECT_LT(WrapDegrees(-1e-20), 360.0);
}

}  // namespace
}  // namespace simulator
