// SPDX-License-Identifier: MIT
#include "gateways/mount/request.h"

#include <gmock/gmock.h>

#include <limits>

namespace {

using namespace velquin;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(RequestValues, TakesPositionsOnTheSkyOnly) {
  for (const double ra : {0.0, 23.999999}) EXPECT_TRUE(IsValid(GotoRequest{{ra, 90.0}})) << ra;
  for (const double ra : {-0.1, 24.0, kNan, kInfinity}) {
    EXPECT_FALSE(IsValid(GotoRequest{{ra, 0.0}})) << ra;
    EXPECT_FALSE(IsValid(SyncRequest{{ra, 0.0}})) << ra;
  }
  for (const double dec : {-90.1, 90.1, kNan})
    EXPECT_FALSE(IsValid(GotoRequest{{1.0, dec}})) << dec;
}

TEST(RequestValues, TakesMoveRatesAboveOneAndZero) {
  const auto isRate = [](double rate) { return IsValid(MoveRequest{Axis::kRa, rate, {}}); };
  for (const double rate : {0.0, 1.000001, -200.0, 200.0}) EXPECT_TRUE(isRate(rate)) << rate;
  for (const double rate : {1.0, -0.5, 200.1, kNan, kInfinity}) EXPECT_FALSE(isRate(rate)) << rate;
}

TEST(RequestValues, TakesPulsesOfUpToAnHour) {
  using std::chrono::hours;
  using std::chrono::microseconds;
  const auto isPulse = [](microseconds length) {
    return IsValid(GuideRequest{{length, {}}, WhenBusy::kReplace}) &&
           IsValid(GuideRequest{{{}, length}, WhenBusy::kReplace});
  };
  EXPECT_TRUE(isPulse(hours(1)));
  EXPECT_TRUE(isPulse(-hours(1)));
  EXPECT_FALSE(isPulse(hours(1) + microseconds(1)));
  EXPECT_FALSE(isPulse(microseconds::min()));
}

TEST(RequestValues, TakesSettingsInTheirRangesOnly) {
  EXPECT_TRUE(IsValid(GuideRatesRequest{{0.0, 1.0}}));
  EXPECT_FALSE(IsValid(GuideRatesRequest{{1.1, 0.5}}));
  EXPECT_FALSE(IsValid(GuideRatesRequest{{0.5, kNan}}));
  EXPECT_TRUE(IsValid(SiteRequest{{-90.0, -180.0, -12}}));
  EXPECT_FALSE(IsValid(SiteRequest{{0.0, 180.1, 0}}));
  EXPECT_FALSE(IsValid(SiteRequest{{0.0, 0.0, 15}}));
  EXPECT_TRUE(IsValid(MeridianRequest{{0.0, 30.0}}));
  EXPECT_FALSE(IsValid(MeridianRequest{{-1.0, 30.0}}));
  EXPECT_FALSE(IsValid(ClockRequest{std::chrono::nanoseconds::min()}));
}

}  // namespace
