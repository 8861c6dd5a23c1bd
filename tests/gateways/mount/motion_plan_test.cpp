// SPDX-License-Identifier: MIT
#include "gateways/mount/motion_plan.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

using namespace std::chrono_literals;
using velquin::Axis;
using velquin::MonotonicTime;
using velquin::MotionPlan;

// Carries a plan out as the worker does, with a wire that takes 1 ms each way, and keeps what was
// sent. Time jumps from one due moment to the next.
class MotionPlanTest : public testing::Test {
 protected:
  struct Sent {
    MonotonicTime at;
    MotionPlan::Command command;
  };

  void Send() {
    const MotionPlan::Ended ended = plan.EndSegment(now);
    for (int axis = 0; axis < 2; ++axis) {
      if (ended.pulse[axis]) endedAt[axis] = now;
    }
    if (const auto command = plan.Next(now)) {
      sent.push_back({now, *command});
      plan.Acknowledged(now, now + kRoundTrip);
      now += kRoundTrip;
    }
  }
  void RunUntil(MonotonicTime end) {
    for (auto due = plan.Due(); due && *due <= end; due = plan.Due()) {
      now = std::max(now, *due);
      Send();
    }
    now = std::max(now, end);
  }
  void RunFor(MonotonicTime::duration time) { RunUntil(now + time); }
  std::chrono::microseconds TotalOf(int axis, double rate) const {
    std::chrono::microseconds total{0};
    for (const Sent& each : sent) {
      if (each.command.rates[axis] == rate) total += each.command.length;
    }
    return total;
  }

  static constexpr MonotonicTime::duration kRoundTrip = 2ms;
  MonotonicTime now{1000s};
  MotionPlan plan;
  std::vector<Sent> sent;
  MonotonicTime endedAt[2];
};

TEST_F(MotionPlanTest, SendsNothingForNothing) {
  EXPECT_FALSE(plan.Due());
  EXPECT_FALSE(plan.Next(now));
  EXPECT_TRUE(plan.IsIdle());
}

TEST_F(MotionPlanTest, OnePulseIsOneCommand) {
  plan.SetPulse(Axis::kDec, -1.0, 250ms);
  RunFor(1s);
  ASSERT_EQ(sent.size(), 1u);
  EXPECT_EQ(sent[0].command.length, 250ms);
  EXPECT_EQ(sent[0].command.rates[0], 0.0);
  EXPECT_EQ(sent[0].command.rates[1], -1.0);
  EXPECT_EQ(endedAt[1], sent[0].at + kRoundTrip + 250ms);
  EXPECT_TRUE(plan.IsIdle());
}

TEST_F(MotionPlanTest, TwoLengthsAreTheCommonPartAndTheRest) {
  plan.SetPulse(Axis::kRa, 1.0, 400ms);
  plan.SetPulse(Axis::kDec, -1.0, 1500ms);
  RunFor(3s);
  ASSERT_EQ(sent.size(), 2u);
  EXPECT_EQ(sent[0].command.length, 400ms);
  EXPECT_EQ(sent[0].command.rates, (MotionPlan::Rates{1.0, -1.0}));
  EXPECT_EQ(sent[1].command.length, 1100ms);
  EXPECT_EQ(sent[1].command.rates, (MotionPlan::Rates{0.0, -1.0}));
  // Not before the first has run out on the controller, which began it before it acknowledged it.
  EXPECT_EQ(sent[1].at, sent[0].at + kRoundTrip + 400ms);
  EXPECT_EQ(endedAt[0], sent[1].at);
  EXPECT_EQ(endedAt[1], sent[1].at + kRoundTrip + 1100ms);
}

TEST_F(MotionPlanTest, EqualLengthsAreOneCommand) {
  plan.SetPulse(Axis::kRa, 1.0, 300ms);
  plan.SetPulse(Axis::kDec, 1.0, 300ms);
  RunFor(1s);
  EXPECT_EQ(sent.size(), 1u);
  EXPECT_EQ(endedAt[0], endedAt[1]);
}

TEST_F(MotionPlanTest, APulseThatJoinsKeepsTheTotalOfTheRunningOne) {
  plan.SetPulse(Axis::kRa, 1.0, 1000ms);
  RunFor(300ms);
  plan.SetPulse(Axis::kDec, 1.0, 200ms);
  RunFor(2s);
  ASSERT_EQ(sent.size(), 3u);
  EXPECT_EQ(sent[1].command.length, 200ms);
  EXPECT_EQ(sent[1].command.rates, (MotionPlan::Rates{1.0, 1.0}));
  const auto ran = sent[1].at - sent[0].at;  // the first was replaced after this time
  EXPECT_EQ(ran + sent[1].command.length + sent[2].command.length, 1000ms);
  EXPECT_EQ(TotalOf(1, 1.0), 200ms);
}

TEST_F(MotionPlanTest, APulseReplacesOneOnItsAxisAndLeavesTheOther) {
  plan.SetPulse(Axis::kRa, 1.0, 1000ms);
  plan.SetPulse(Axis::kDec, 1.0, 1000ms);
  RunFor(100ms);
  plan.SetPulse(Axis::kRa, -1.0, 2000ms);
  RunFor(4s);
  ASSERT_EQ(sent.size(), 3u);
  EXPECT_EQ(TotalOf(0, -1.0), 2000ms);
  EXPECT_EQ(sent[1].at - sent[0].at + sent[1].command.length, 1000ms);
  EXPECT_EQ(sent[2].command.rates, (MotionPlan::Rates{-1.0, 0.0}));
}

TEST_F(MotionPlanTest, LengthsAreExactToTheMicrosecond) {
  plan.SetPulse(Axis::kRa, 1.0, 333'333us);
  plan.SetPulse(Axis::kDec, 1.0, 1'000'001us);
  RunFor(3s);
  EXPECT_EQ(TotalOf(0, 1.0), 333'333us);
  EXPECT_EQ(TotalOf(1, 1.0), 1'000'001us);
}

TEST_F(MotionPlanTest, AnUnansweredPulseIsGivenUp) {
  plan.SetPulse(Axis::kRa, 1.0, 100ms);
  plan.SetPulse(Axis::kDec, 1.0, 500ms);
  ASSERT_TRUE(plan.Next(now));
  plan.Failed(false);
  EXPECT_TRUE(plan.IsIdle());
  EXPECT_FALSE(plan.Due());
}

TEST_F(MotionPlanTest, AHeldAxisIsCommandedAgainWhileItIsRenewed) {
  for (int i = 0; i < 30; ++i) {
    plan.Hold(Axis::kRa, 20.0, now + 1s);
    RunFor(100ms);
  }
  const MonotonicTime released = now - 100ms;
  RunFor(5s);
  ASSERT_GE(sent.size(), 8u);
  for (size_t i = 1; i < sent.size(); ++i) {
    // Never a gap: each command comes before the one before has run out.
    EXPECT_LT(sent[i].at, sent[i - 1].at + sent[i - 1].command.length);
    EXPECT_EQ(sent[i].command.rates[0], 20.0);
  }
  EXPECT_LE(sent.back().at + sent.back().command.length, released + 1s);
  EXPECT_TRUE(plan.IsIdle());
}

TEST_F(MotionPlanTest, ALostRenewalIsMadeUpForInTime) {
  plan.Hold(Axis::kRa, 20.0, now + 1s);
  Send();
  plan.Hold(Axis::kRa, 20.0, now + 900ms + 1s);
  const MonotonicTime due = *plan.Due();
  now = due;
  ASSERT_TRUE(plan.Next(now));
  plan.Failed(false);
  now += 500ms;  // the time that a silent exchange takes
  ASSERT_TRUE(plan.Due());
  EXPECT_TRUE(plan.Next(now));
  EXPECT_LT(now, sent[0].at + sent[0].command.length);
}

TEST_F(MotionPlanTest, EndingAnAxisStopsItAndLeavesTheOther) {
  plan.Hold(Axis::kRa, 20.0, now + 1s);
  plan.Hold(Axis::kDec, -30.0, now + 1s);
  Send();
  EXPECT_TRUE(plan.End(Axis::kRa));
  Send();
  EXPECT_EQ(sent[1].command.rates, (MotionPlan::Rates{0.0, -30.0}));
  EXPECT_FALSE(sent[1].command.ends);
  EXPECT_TRUE(plan.End(Axis::kDec));
  Send();
  EXPECT_TRUE(sent[2].command.ends);
  EXPECT_EQ(sent[2].command.rates, (MotionPlan::Rates{0.0, 0.0}));
  EXPECT_TRUE(plan.IsIdle());
}

TEST_F(MotionPlanTest, AnUnansweredEndIsSentAgain) {
  plan.Hold(Axis::kRa, 20.0, now + 1s);
  Send();
  plan.End(Axis::kRa);
  ASSERT_TRUE(plan.Next(now));
  plan.Failed(false);
  const auto again = plan.Next(now);
  ASSERT_TRUE(again);
  EXPECT_TRUE(again->ends);
}

TEST_F(MotionPlanTest, AHeldAxisAndAPulseGoTogether) {
  plan.Hold(Axis::kRa, 20.0, now + 1s);
  Send();
  now += 100ms;
  plan.SetPulse(Axis::kDec, 1.0, 250ms);
  RunFor(3s);
  EXPECT_EQ(sent[1].command.rates, (MotionPlan::Rates{20.0, 1.0}));
  EXPECT_EQ(TotalOf(1, 1.0), 250ms);
  EXPECT_TRUE(plan.IsIdle());
}

}  // namespace
