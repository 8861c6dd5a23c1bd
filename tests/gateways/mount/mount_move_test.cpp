// SPDX-License-Identifier: MIT
// Moving by hand.
#include <thread>

#include "tests/gateways/mount/simulated_mount.h"

namespace {

using namespace std::chrono_literals;
using velquin::Axis;
using velquin::Motion;
using velquin::Outcome;
using velquin::Ticket;

class MountMove : public SimulatedMount {
 protected:
  void SetUp() override {
    Begin();
    ASSERT_EQ(Of(mount->Goto(High())), Outcome::kDone);
  }
  bool IsHeld(Axis axis) { return mount->State().moving[Index(axis)]; }
  void HoldFor(Axis axis, double rate, std::chrono::milliseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) {
      mount->MoveAxis(axis, rate);
      std::this_thread::sleep_for(50ms);  // how often the caller renews
    }
  }
};

TEST_F(MountMove, GoesOnWhileItIsRenewedAndStopsAtZero) {
  const double before = mount->State().position.decDegrees;
  ASSERT_EQ(Of(mount->MoveAxis(Axis::kDec, 20.0)), Outcome::kDone);
  EXPECT_TRUE(ShowsMotion(Motion::kMovingByHand));
  HoldFor(Axis::kDec, 20.0, 2500ms);
  EXPECT_TRUE(IsHeld(Axis::kDec));
  EXPECT_EQ(Of(mount->MoveAxis(Axis::kDec, 0.0)), Outcome::kDone);
  EXPECT_TRUE(ShowsMotion(Motion::kTracking));
  EXPECT_EQ(controller->Commands("$MTMV2=").back().bytes, "$MTMV2=1.000000,0.000000,0.000000");
  // 2.5 s at 20 times the sidereal rate are 0.21 degrees.
  EXPECT_GT(mount->State().position.decDegrees - before, 0.2);
}

TEST_F(MountMove, EndsByItselfWithinASecondWhenNobodyRenews) {
  ASSERT_EQ(Of(mount->MoveAxis(Axis::kRa, -50.0)), Outcome::kDone);
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_TRUE(Eventually([&] { return !IsHeld(Axis::kRa); }, kSoon));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
  const auto moves = controller->Commands("$MTMV2=");
  ASSERT_EQ(moves.size(), 1u);  // the controller ended it
  EXPECT_LE(std::stod(moves[0].bytes.substr(7)), 1.0);
}

TEST_F(MountMove, ARenewalIsDoneAtOnce) {
  ASSERT_EQ(Of(mount->MoveAxis(Axis::kRa, 50.0)), Outcome::kDone);
  const size_t sent = controller->Commands("$MTMV2=").size();
  EXPECT_EQ(Of(mount->MoveAxis(Axis::kRa, 50.0)), Outcome::kDone);
  EXPECT_EQ(controller->Commands("$MTMV2=").size(), sent);
}

TEST_F(MountMove, EndingOneAxisLeavesTheOther) {
  ASSERT_EQ(Of(mount->MoveAxis(Axis::kRa, 50.0)), Outcome::kDone);
  ASSERT_EQ(Of(mount->MoveAxis(Axis::kDec, -30.0)), Outcome::kDone);
  EXPECT_NE(controller->Commands("$MTMV2=").back().bytes.find(",50.000000,-30.000000"),
            std::string::npos);
  ASSERT_EQ(Of(mount->MoveAxis(Axis::kRa, 0.0)), Outcome::kDone);
  EXPECT_NE(controller->Commands("$MTMV2=").back().bytes.find(",0.000000,-30.000000"),
            std::string::npos);
  EXPECT_FALSE(IsHeld(Axis::kRa));
  EXPECT_TRUE(IsHeld(Axis::kDec));
}

TEST_F(MountMove, ZeroIsDoneWhenNothingMoves) {
  EXPECT_EQ(Of(mount->MoveAxis(Axis::kRa, 0.0)), Outcome::kDone);
  EXPECT_TRUE(controller->Commands("$MTMV2=").empty());
}

TEST_F(MountMove, AGotoTakesItsPlace) {
  ASSERT_EQ(Of(mount->MoveAxis(Axis::kRa, 50.0)), Outcome::kDone);
  EXPECT_EQ(Of(mount->Goto(High(2.0))), Outcome::kDone);
  EXPECT_FALSE(IsHeld(Axis::kRa));
}

TEST_F(MountMove, IsRefusedWhileTheMountSlews) {
  controller->Answer("$MTTGT=1,270,0,Home");
  ASSERT_TRUE(ShowsMotion(Motion::kSlewing));
  EXPECT_EQ(Of(mount->MoveAxis(Axis::kRa, 50.0)), Outcome::kMoving);
}

TEST_F(MountMove, AStopEndsIt) {
  const Ticket move = mount->MoveAxis(Axis::kRa, 50.0);
  ASSERT_EQ(Of(move), Outcome::kDone);
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  EXPECT_FALSE(IsHeld(Axis::kRa));
  EXPECT_EQ(mount->State().motion, Motion::kTracking);
}

}  // namespace
