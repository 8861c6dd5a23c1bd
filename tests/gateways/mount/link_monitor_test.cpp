// SPDX-License-Identifier: MIT
#include "gateways/mount/link_monitor.h"

#include <gmock/gmock.h>

namespace {

using std::chrono::milliseconds;
using velquin::LinkMonitor;
using velquin::LinkQuality;

TEST(LinkMonitor, TellsMedianAndNinetyNinthPercentile) {
  LinkMonitor monitor;
  for (int ms = 100; ms >= 1; --ms) monitor.Answered(milliseconds(ms));
  EXPECT_DOUBLE_EQ(monitor.Health().roundTripMedianMs, 50.0);
  EXPECT_DOUBLE_EQ(monitor.Health().roundTripP99Ms, 99.0);
  EXPECT_EQ(monitor.Health().exchanges, 100u);
}

TEST(LinkMonitor, ForgetsOldRoundTrips) {
  LinkMonitor monitor;
  for (int i = 0; i < 100; ++i) monitor.Answered(milliseconds(500));
  for (size_t i = 0; i < LinkMonitor::kRoundTrips; ++i) monitor.Answered(milliseconds(2));
  EXPECT_DOUBLE_EQ(monitor.Health().roundTripP99Ms, 2.0);
}

TEST(LinkMonitor, IsShakyForTwentyExchangesAfterALoss) {
  LinkMonitor monitor;
  EXPECT_EQ(monitor.Health().quality, LinkQuality::kGood);
  monitor.Lost();
  for (size_t i = 1; i < LinkMonitor::kRecent; ++i) {
    monitor.Answered(milliseconds(1));
    EXPECT_EQ(monitor.Health().quality, LinkQuality::kShaky) << i;
  }
  monitor.Answered(milliseconds(1));
  EXPECT_EQ(monitor.Health().quality, LinkQuality::kGood);
  EXPECT_EQ(monitor.Health().losses, 1u);
}

TEST(LinkMonitor, LosesTheLinkWithTheThirdSilentPollInARow) {
  LinkMonitor monitor;
  EXPECT_FALSE(monitor.PollWas(false));
  EXPECT_FALSE(monitor.PollWas(false));
  EXPECT_FALSE(monitor.PollWas(true));
  EXPECT_FALSE(monitor.PollWas(false));
  EXPECT_FALSE(monitor.PollWas(false));
  EXPECT_TRUE(monitor.PollWas(false));
}

}  // namespace
