// SPDX-License-Identifier: MIT
#include "include/velquin_util.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>

namespace {

HourMinSec Split(double hours) {
  // Filled with nonsense, so that a field that is not written is seen.
  HourMinSec result = {-77, -77, -77.0};
  HourTo60(hours, &result);
  return result;
}

void ExpectSplit(double hours, int hour, int minute, double second) {
  const HourMinSec split = Split(hours);
  EXPECT_EQ(split.nHour, hour) << hours;
  EXPECT_EQ(split.nMin, minute) << hours;
  EXPECT_NEAR(split.dSec, second, 1e-6) << hours;
}

}  // namespace

TEST(HourTo60, SplitsHoursIntoHoursMinutesAndSeconds) {
  ExpectSplit(12.5, 12, 30, 0.0);
  ExpectSplit(0.0, 0, 0, 0.0);
  ExpectSplit(23.999, 23, 59, 56.4);
  ExpectSplit(5 + 34 / 60.0 + 31.94 / 3600.0, 5, 34, 31.94);
}

TEST(HourTo60, DoesNotRoundUpJustBelowAnHour) {
  ExpectSplit(0.999999, 0, 59, 59.9964);
}

TEST(HourTo60, TakesTheFloorOfANegativeTime) {
  ExpectSplit(-1.5, -2, 30, 0.0);
  ExpectSplit(-0.25, -1, 45, 0.0);
  ExpectSplit(-3.0, -3, 0, 0.0);
}

TEST(HourTo60, GivesSixtyMinutesForATimeTooCloseBelowAnHour) {
  ExpectSplit(-1e-20, -1, 60, 0.0);
}

TEST(HourTo60, HasNoLimitOfADay) {
  ExpectSplit(49.75, 49, 45, 0.0);
}

TEST(HourTo60, AddsUpToWhatItSplit) {
  std::mt19937 random(7);
  std::uniform_real_distribution<double> anyHours(-1000.0, 1000.0);
  for (int i = 0; i < 20000; ++i) {
    const double hours = anyHours(random);
    const HourMinSec split = Split(hours);
    ASSERT_EQ(split.nHour, static_cast<int>(std::floor(hours))) << hours;
    ASSERT_GE(split.nMin, 0) << hours;
    ASSERT_LE(split.nMin, 59) << hours;
    ASSERT_GE(split.dSec, -1e-6) << hours;
    ASSERT_LT(split.dSec, 60.0 + 1e-6) << hours;
    ASSERT_NEAR(split.nHour + split.nMin / 60.0 + split.dSec / 3600.0, hours, 1e-9) << hours;
  }
}

TEST(Degmal, FoldsIntoOneTurn) {
  EXPECT_DOUBLE_EQ(degmal(-30.0), 330.0);
  EXPECT_EQ(degmal(720.0), 0.0);
  EXPECT_EQ(degmal(360.0), 0.0);
  EXPECT_EQ(degmal(0.0), 0.0);
  EXPECT_NEAR(degmal(725.0), 5.0, 1e-12);
  EXPECT_NEAR(degmal(-725.0), 355.0, 1e-12);
}

// An angle that took the way over a whole turn would lose its last digits.
TEST(Degmal, KeepsSmallAnglesToTheLastDigit) {
  EXPECT_DOUBLE_EQ(degmal(0.1), 0.1);
  EXPECT_DOUBLE_EQ(degmal(0.9), 0.9);
  EXPECT_DOUBLE_EQ(degmal(1e-9), 1e-9);
}

TEST(Degmal, StaysBelowAWholeTurn) {
  EXPECT_LT(degmal(359.9999), 360.0);
  EXPECT_NEAR(degmal(359.9999), 359.9999, 1e-9);
}

// Below zero by less than a double can tell from a turn: the sum is 360 and must become 0.
TEST(Degmal, FoldsTheLeastAngleBelowZeroToZero) {
  EXPECT_EQ(degmal(-1e-20), 0.0);
  EXPECT_EQ(degmal(-5e-324), 0.0);
}

TEST(Degmal, KeepsTheDirection) {
  std::mt19937 random(8);
  std::uniform_real_distribution<double> anyAngle(-100000.0, 100000.0);
  for (int i = 0; i < 20000; ++i) {
    const double angle = anyAngle(random);
    const double folded = degmal(angle);
    ASSERT_GE(folded, 0.0) << angle;
    ASSERT_LT(folded, 360.0) << angle;
    ASSERT_NEAR(std::remainder(folded - angle, 360.0), 0.0, 1e-9) << angle;
  }
}

TEST(Degmal, HasNoNumberForWhatIsNoDirection) {
  EXPECT_TRUE(std::isnan(degmal(INFINITY)));
  EXPECT_TRUE(std::isnan(degmal(-INFINITY)));
  EXPECT_TRUE(std::isnan(degmal(NAN)));
}

TEST(Degmal2, GivesThePoleForWhatIsNoDirection) {
  EXPECT_EQ(degmal2(INFINITY), 90.0);
  EXPECT_EQ(degmal2(-INFINITY), 90.0);
  EXPECT_EQ(degmal2(NAN), 90.0);
}

TEST(Degmal2, KeepsWhatIsADeclination) {
  EXPECT_DOUBLE_EQ(degmal2(45.0), 45.0);
  EXPECT_DOUBLE_EQ(degmal2(-45.0), -45.0);
  EXPECT_DOUBLE_EQ(degmal2(90.0), 90.0);
  EXPECT_DOUBLE_EQ(degmal2(-90.0), -90.0);
  EXPECT_EQ(degmal2(0.0), 0.0);
}

TEST(Degmal2, FoldsWholeTurns) {
  EXPECT_DOUBLE_EQ(degmal2(315.0), -45.0);
  EXPECT_DOUBLE_EQ(degmal2(405.0), 45.0);
  EXPECT_DOUBLE_EQ(degmal2(-315.0), 45.0);
}

// An angle beyond a pole is not folded back, it stops at the pole.
TEST(Degmal2, StopsAtThePoles) {
  EXPECT_EQ(degmal2(100.0), 90.0);
  EXPECT_EQ(degmal2(170.0), 90.0);
  EXPECT_EQ(degmal2(200.0), -90.0);
  EXPECT_EQ(degmal2(-100.0), -90.0);
  EXPECT_EQ(degmal2(269.0), -90.0);
}

TEST(Degmal2, BelongsToTheNorthAtExactlyHalfATurn) {
  EXPECT_EQ(degmal2(180.0), 90.0);
  EXPECT_EQ(degmal2(180.0001), -90.0);
}
