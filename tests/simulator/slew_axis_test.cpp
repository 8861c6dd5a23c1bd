// SPDX-License-Identifier: MIT
#include "simulator/slew_axis.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace simulator {
namespace {

constexpr SlewLimits kLimits = {4.0, 2.0};
constexpr double kStep = 0.01;
// The last step, which ends exactly at the target, may brake an eighth harder than the others.
constexpr double kHardest = 2.0 * 1.126;

/// What one slew looked like from outside.
struct Profile {
  double seconds = 0.0;
  double fastest = 0.0;  // degrees per second
  double hardest = 0.0;  // change of speed, degrees per second squared
  double farthest = -std::numeric_limits<double>::infinity();
};

Profile SlewTo(SlewAxis& axis, double target) {
  Profile profile;
  double rate = axis.slewRate;
  bool there = false;
  while (!there && profile.seconds < 1000.0) {
    const double before = axis.degrees;
    there = axis.StepTowards(target, kStep, kLimits);
    const double newRate = (axis.degrees - before) / kStep;
    profile.fastest = std::max(profile.fastest, std::fabs(newRate));
    profile.hardest = std::max(profile.hardest, std::fabs(newRate - rate) / kStep);
    profile.farthest = std::max(profile.farthest, axis.degrees);
    profile.seconds += kStep;
    rate = newRate;
  }
  return profile;
}

TEST(SlewAxis, SpeedsUpTravelsAtTheTopRateAndBrakes) {
  SlewAxis axis = {10.0};
  const Profile profile = SlewTo(axis, 110.0);
  EXPECT_EQ(axis.degrees, 110.0);
  EXPECT_EQ(axis.slewRate, 0.0);
  EXPECT_NEAR(profile.fastest, 4.0, 1e-9);
  EXPECT_LE(profile.hardest, kHardest);
  EXPECT_LE(profile.farthest, 110.0);
  EXPECT_NEAR(profile.seconds, 100.0 / 4.0 + 4.0 / 2.0, 0.1);  // 2 s up and 2 s down, half as far
}

TEST(SlewAxis, DoesNotReachTheTopRateOnAShortWay) {
  SlewAxis axis = {0.0};
  const Profile profile = SlewTo(axis, 0.5);
  EXPECT_NEAR(profile.seconds, 2.0 * std::sqrt(0.5 / 2.0), 0.05);
  EXPECT_NEAR(profile.fastest, 1.0, 0.05);
  EXPECT_LE(profile.farthest, 0.5);
}

TEST(SlewAxis, GoesDownAsItGoesUp) {
  SlewAxis up = {0.0};
  SlewAxis down = {0.0};
  EXPECT_NEAR(SlewTo(up, 30.0).seconds, SlewTo(down, -30.0).seconds, 1.5 * kStep);
  EXPECT_EQ(down.degrees, -30.0);
}

TEST(SlewAxis, ArrivesOverAnyDistance) {
  for (const double distance : {0.0, 1e-20, 1e-13, 1e-9, 1e-6, 0.001, 0.01, 359.0}) {
    SlewAxis axis = {0.0};
    EXPECT_LT(SlewTo(axis, distance).seconds, 100.0) << distance;
    EXPECT_EQ(axis.degrees, distance);
  }
}

TEST(SlewAxis, TurnsRoundWithoutAJerk) {
  SlewAxis axis = {0.0, 4.0};
  const Profile profile = SlewTo(axis, -10.0);
  EXPECT_EQ(axis.degrees, -10.0);
  EXPECT_LE(profile.hardest, kHardest);
  EXPECT_NEAR(profile.farthest, 4.0 * 4.0 / (2.0 * 2.0), 0.05);  // its braking distance
}

TEST(SlewAxis, KnowsWhereBrakingEnds) {
  SlewAxis axis = {50.0, -4.0};
  EXPECT_NEAR(axis.BrakingPoint(kLimits), 46.0, 1e-12);
  const Profile profile = SlewTo(axis, axis.BrakingPoint(kLimits));
  EXPECT_LE(profile.hardest, kHardest);
  EXPECT_NEAR(profile.seconds, 2.0, 0.05);
}

}  // namespace
}  // namespace simulator
