// SPDX-License-Identifier: MIT
// What is seen of a slew to a place that the controller alone knows, a look every tenth of a
// second.
#include "console/slew_watch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace velquinctl {
namespace {

constexpr double kSkyTurn = 360.0 / 86164.0;  // degrees a second

/// @return the watch after ten seconds of a mount that moves as `position` says.
SlewWatch After(const std::function<SkyPosition(double)>& position) {
  SlewWatch watch(position(0.0));
  for (int look = 0; look <= 100; ++look) watch.Add(look / 10.0, position(look / 10.0));
  return watch;
}

/// Slews up to a declination at 10 degrees a second.
double Up(double seconds, double declination) {
  return std::min(20.0 + 10.0 * seconds, declination);
}

TEST(SlewWatch, AMountThatStandsAtThePoleRestsAsAtHome) {
  const SlewWatch watch =
      After([](double s) { return SkyPosition{90.0 + s * kSkyTurn, Up(s, 90.0)}; });
  EXPECT_TRUE(watch.Moved());
  EXPECT_TRUE(watch.AtRest());
  EXPECT_TRUE(watch.RestsAsAtHome());
  EXPECT_NEAR(watch.TravelDegrees(), 70.0, 0.1);
}

TEST(SlewWatch, AMountThatWasStoppedOnTheWayIsNotAtHome) {
  const SlewWatch tracks = After([](double s) { return SkyPosition{90.0, Up(s, 50.0)}; });
  EXPECT_TRUE(tracks.Moved());
  EXPECT_TRUE(tracks.AtRest());
  EXPECT_FALSE(tracks.RestsAsAtHome());
  const SlewWatch stands =
      After([](double s) { return SkyPosition{90.0 + s * kSkyTurn, Up(s, 50.0)}; });
  EXPECT_TRUE(stands.AtRest());
  EXPECT_FALSE(stands.RestsAsAtHome()) << "far from the pole";
  EXPECT_FALSE(After([](double s) { return SkyPosition{90.0, Up(s, 90.0)}; }).RestsAsAtHome())
      << "tracks";
}

TEST(SlewWatch, AMountThatCreepsDoesNotRest) {
  const SlewWatch watch = After([](double s) { return SkyPosition{90.0, 85.0 + 0.1 * s}; });
  EXPECT_FALSE(watch.AtRest());
  EXPECT_FALSE(watch.RestsAsAtHome());
}

TEST(SlewWatch, TheTurningSkyIsNoMotion) {
  EXPECT_FALSE(After([](double s) { return SkyPosition{90.0 + s * kSkyTurn, 90.0}; }).Moved());
}

}  // namespace
}  // namespace velquinctl
