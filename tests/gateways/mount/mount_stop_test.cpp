// SPDX-License-Identifier: MIT
// Stopping, which goes before everything else.
#include <algorithm>
#include <thread>

#include "tests/gateways/mount/scripted_mount.h"

namespace {

using namespace std::chrono_literals;
using simulator::Late;
using simulator::Silence;
using velquin::Axis;
using velquin::Connection;
using velquin::Outcome;
using velquin::Ticket;

class MountStop : public ScriptedMount {
 protected:
  void SetUp() override { Connect(); }
};

TEST_F(MountStop, SendsTheStopAndTheEndOfMoves) {
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTSTP=1", "$MTMV2=1.000000,0.000000,0.000000"));
}

TEST_F(MountStop, CancelsTheGotoUnderWay) {
  controller.Status(kSlewing);
  const Ticket ticket = mount->Goto(kTarget);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  EXPECT_EQ(Of(ticket), Outcome::kCancelledByStop);
}

TEST_F(MountStop, OvertakesAllThatWaits) {
  controller.Answers("$MTAGS=", Late("$MTAGS=1", 300));
  const Ticket rates = mount->SetGuideRates({0.5, 0.5});
  ASSERT_TRUE(controller.WaitFor("$MTAGS=", kSoonMs));
  const Ticket pulse = mount->Guide({500ms, 0ms});
  const Ticket sync = mount->Sync(kTarget);
  const Ticket move = mount->MoveAxis(Axis::kDec, 10.0);
  const Ticket home = mount->Home();
  const Ticket meridian = mount->SetMeridian({0.0, 3.0});
  const Ticket stop = mount->Stop();
  for (const Ticket& ticket : {pulse, sync, move, home}) {
    EXPECT_EQ(Of(ticket), Outcome::kCancelledByStop);
  }
  EXPECT_EQ(Of(stop), Outcome::kDone);
  EXPECT_EQ(Of(rates), Outcome::kDone);
  EXPECT_EQ(Of(meridian), Outcome::kDone);  // a setting moves nothing
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTAGS=0.500000,0.500000", "$MTSTP=1",
                                           "$MTMV2=1.000000,0.000000,0.000000",
                                           "$MTCOM=0.000000,3.000000"));
}

TEST_F(MountStop, EndsARunningPulseAndItsRest) {
  const Ticket pulse = mount->Guide({300ms, 600ms});
  ASSERT_TRUE(controller.WaitFor("$MTMV2=", kSoonMs));
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  EXPECT_EQ(Of(pulse), Outcome::kCancelledByStop);
  EXPECT_FALSE(mount->State().IsPulsing(Axis::kRa));
  std::this_thread::sleep_for(800ms);  // the time in which the rest would have come
  EXPECT_EQ(Sent().back(), "$MTMV2=1.000000,0.000000,0.000000");
}

TEST_F(MountStop, IsRepeatedUntilItIsAcknowledged) {
  controller.AnswersOnce("$MTSTP=1", Silence());
  controller.AnswersOnce("$MTSTP=1", Silence());
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  EXPECT_EQ(controller.CountOf("$MTSTP=1"), 3);
}

TEST_F(MountStop, IsRepeatedUntilTheLinkIsLost) {
  controller.IsSilentTo("$MTSTP=1");
  EXPECT_EQ(Of(mount->Stop()), Outcome::kLinkLost);
  EXPECT_EQ(controller.CountOf("$MTSTP=1"), 3);
}

TEST_F(MountStop, InterruptsAPollThatWaitsForItsAnswer) {
  controller.IsSilentTo("$MTSTA?");
  controller.Clear();
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
  controller.Clear();
  const auto asked = std::chrono::steady_clock::now();
  mount->Stop();
  ASSERT_TRUE(controller.WaitFor("$MTSTP=1", kSoonMs));
  EXPECT_LT(std::chrono::steady_clock::now() - asked, 400ms);
}

TEST_F(MountStop, IsOnTheWireWithinFiveMilliseconds) {
  controller.StartWireLog();
  std::vector<double> delays;
  for (int i = 0; i < 200; ++i) {
    controller.Clear();
    const double asked = controller.WireNowMs();
    const Ticket stop = mount->Stop();
    ASSERT_EQ(Of(stop), Outcome::kDone);
    for (const auto& datagram : controller.WireLog()) {
      const bool isStop = datagram.bytes.starts_with("$MTSTP=1") && datagram.timeMs >= asked &&
                          datagram.direction == simulator::WireDirection::kIn;
      if (isStop) delays.push_back(datagram.timeMs - asked);
    }
  }
  ASSERT_EQ(delays.size(), 200u);
  std::sort(delays.begin(), delays.end());
  EXPECT_LT(delays[100], 5.0);
  RecordProperty("median_us", static_cast<int>(delays[100] * 1000.0));
  RecordProperty("p99_us", static_cast<int>(delays[197] * 1000.0));
}

TEST_F(MountStop, WhatIsAskedForAfterwardsIsDone) {
  controller.Answers("$MTSTP=1", Late("$MTSTP=1", 100));
  const Ticket stop = mount->Stop();
  controller.Status(kAtTarget);
  const Ticket ticket = mount->Goto(kTarget);
  EXPECT_EQ(Of(stop), Outcome::kDone);
  EXPECT_EQ(Of(ticket), Outcome::kDone);
  EXPECT_EQ(Sent().back(), "$MTTGT=3,5.500000,22.000000,");
}

}  // namespace
