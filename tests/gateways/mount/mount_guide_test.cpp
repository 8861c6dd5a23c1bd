// SPDX-License-Identifier: MIT
// Guide pulses on the simulated mount, which tells how long each was applied.
#include <cstdio>
#include <numeric>

#include "tests/gateways/mount/simulated_mount.h"

namespace {

using namespace std::chrono_literals;
using std::chrono::microseconds;
using velquin::Axis;
using velquin::Outcome;
using velquin::Pulse;
using velquin::Ticket;
using velquin::WhenBusy;

struct Move {
  double seconds;
  double ra;
  double dec;
  double timeMs;
};

class MountGuide : public SimulatedMount {
 protected:
  void SetUp() override {
    Begin();
    ASSERT_EQ(Of(mount->Goto(High())), Outcome::kDone);
  }
  std::vector<Move> Moves() {
    std::vector<Move> moves;
    for (const auto& datagram : controller->Commands("$MTMV2=")) {
      Move move = {0.0, 0.0, 0.0, datagram.timeMs};
      std::sscanf(datagram.bytes.c_str(), "$MTMV2=%lf,%lf,%lf", &move.seconds, &move.ra, &move.dec);
      moves.push_back(move);
    }
    return moves;
  }
  /// What the simulated mount says that each ended move lasted, in seconds. Makes it say so about
  /// the last one.
  std::vector<double> Applied() {
    controller->Answer("$MTSTP=1");
    std::vector<double> applied;
    for (const std::string& report : controller->Reports()) {
      const size_t at = report.find("the move before lasted ");
      if (at != report.npos) applied.push_back(std::stod(report.substr(at + 23)));
    }
    return applied;
  }
  bool IsPulsing(Axis axis) { return mount->State().IsPulsing(axis); }
};

TEST_F(MountGuide, OnePulseMovesTheMountAndIsSentOnce) {
  const double before = mount->State().position.decDegrees;
  const Ticket ticket = mount->Guide({0us, 500ms});
  ASSERT_TRUE(Eventually([&] { return IsPulsing(Axis::kDec); }, kSoon));
  EXPECT_FALSE(IsPulsing(Axis::kRa));
  EXPECT_EQ(mount->State().motion, velquin::Motion::kTracking);  // a pulse is no slew
  EXPECT_EQ(Of(ticket), Outcome::kDone);
  EXPECT_FALSE(IsPulsing(Axis::kDec));
  // At the sidereal rate, from a status that is newer than the end of the pulse.
  EXPECT_NEAR(mount->State().position.decDegrees - before, 0.5 * 15.041067 / 3600.0, 2e-6);
  const auto moves = Moves();
  ASSERT_EQ(moves.size(), 1u);
  EXPECT_EQ(moves[0].seconds, 0.5);
  EXPECT_EQ(moves[0].ra, 0.0);
  EXPECT_EQ(moves[0].dec, 1.0);
}

TEST_F(MountGuide, PositiveRaisesRightAscension) {
  const double before = mount->State().position.raHours;
  EXPECT_EQ(Of(mount->Guide({400ms, 0us})), Outcome::kDone);
  EXPECT_NEAR((mount->State().position.raHours - before) * 15.0, 0.4 * 15.041 / 3600.0, 1e-4);
}

TEST_F(MountGuide, DirectionsHaveTheSignsOfTheDriver) {
  using velquin::PulseDirection;
  EXPECT_EQ(PulseTowards(PulseDirection::kNorth, 5ms).dec, 5ms);
  EXPECT_EQ(PulseTowards(PulseDirection::kSouth, 5ms).dec, -5ms);
  EXPECT_EQ(PulseTowards(PulseDirection::kEast, 5ms).ra, -5ms);
  EXPECT_EQ(PulseTowards(PulseDirection::kWest, 5ms).ra, 5ms);
}

TEST_F(MountGuide, TwoLengthsAddUpExactly) {
  EXPECT_EQ(Of(mount->Guide({300'123us, -800'456us})), Outcome::kDone);
  const auto moves = Moves();
  ASSERT_EQ(moves.size(), 2u);
  EXPECT_EQ(moves[0].seconds, 0.300123);
  EXPECT_EQ(moves[0].ra, 1.0);
  EXPECT_EQ(moves[0].dec, -1.0);
  EXPECT_EQ(moves[1].seconds, 0.500333);
  EXPECT_EQ(moves[1].ra, 0.0);
  EXPECT_EQ(moves[1].dec, -1.0);
  // The mount carried both out to their ends: the second did not cut the first short.
  EXPECT_THAT(Applied(), testing::ElementsAre(0.300, 0.500));
}

TEST_F(MountGuide, TheRestComesOnTime) {
  std::vector<double> late;
  for (int i = 0; i < 10; ++i) {
    const size_t before = Moves().size();
    ASSERT_EQ(Of(mount->Guide({50ms, 90ms})), Outcome::kDone);
    const auto moves = Moves();
    ASSERT_EQ(moves.size(), before + 2);
    late.push_back(moves[before + 1].timeMs - moves[before].timeMs - 50.0);
  }
  std::sort(late.begin(), late.end());
  EXPECT_GE(late.front(), 0.0);
  EXPECT_LT(late[late.size() / 2], 10.0);
  RecordProperty("median_us", static_cast<int>(late[late.size() / 2] * 1000.0));
}

TEST_F(MountGuide, APulseOnTheOtherAxisJoins) {
  const Ticket ra = mount->Guide({600ms, 0us});
  ASSERT_TRUE(Eventually([&] { return IsPulsing(Axis::kRa); }, kSoon));
  const Ticket dec = mount->Guide({0us, 200ms}, WhenBusy::kRefuse);
  EXPECT_EQ(Of(dec), Outcome::kDone);
  EXPECT_FALSE(ra.IsKnown());
  EXPECT_EQ(Of(ra), Outcome::kDone);
  EXPECT_EQ(Moves().size(), 3u);
  // Applied: alone, both, alone. On this link the times of the commands are known within a few ms.
  const auto applied = Applied();
  ASSERT_EQ(applied.size(), 3u);
  EXPECT_NEAR(std::accumulate(applied.begin(), applied.end(), 0.0), 0.6, 0.01);
  EXPECT_EQ(applied[1], 0.2);
}

TEST_F(MountGuide, ASecondPulseOnTheAxisReplacesOrIsRefused) {
  const Ticket first = mount->Guide({2s, 0us});
  ASSERT_TRUE(Eventually([&] { return IsPulsing(Axis::kRa); }, kSoon));
  EXPECT_EQ(Of(mount->Guide({100ms, 100ms}, WhenBusy::kRefuse)), Outcome::kAxisBusy);
  EXPECT_FALSE(first.IsKnown());
  EXPECT_EQ(Moves().size(), 1u);
  const Ticket second = mount->Guide({-100ms, 0us}, WhenBusy::kReplace);
  EXPECT_EQ(Of(first), Outcome::kOvertaken);
  EXPECT_EQ(Of(second), Outcome::kDone);
  const auto moves = Moves();
  ASSERT_EQ(moves.size(), 2u);
  EXPECT_EQ(moves[1].ra, -1.0);
  EXPECT_EQ(moves[1].seconds, 0.1);
}

TEST_F(MountGuide, PollsGoOnMeanwhile) {
  const size_t before = controller->Commands("$MTSTA?").size();
  EXPECT_EQ(Of(mount->Guide({500ms, 0us})), Outcome::kDone);
  EXPECT_GE(controller->Commands("$MTSTA?").size(), before + 10);
}

TEST_F(MountGuide, OfNoLengthIsDoneAtOnce) {
  EXPECT_EQ(Of(mount->Guide({})), Outcome::kDone);
  EXPECT_TRUE(Moves().empty());
}

TEST_F(MountGuide, IsRefusedWhileTheMountSlews) {
  controller->Answer("$MTTGT=1,270,0,Home");
  ASSERT_TRUE(ShowsMotion(velquin::Motion::kSlewing));
  EXPECT_EQ(Of(mount->Guide({100ms, 0us})), Outcome::kMoving);
}

}  // namespace
