// SPDX-License-Identifier: MIT
#include "gateways/mount/arrival_judge.h"

#include <gmock/gmock.h>

namespace {

using std::chrono::milliseconds;
using velquin::ArrivalJudge;
using velquin::MonotonicTime;
using velquin::SeparationDegrees;
using Goal = ArrivalJudge::Goal;
using Verdict = ArrivalJudge::Verdict;

constexpr velquin::SkyPoint kTarget = {5.5, 22.0};
constexpr double kTolerance = 0.02;

MountStatus At(double raHours, double decDegrees, int state) {
  MountStatus status;
  status.raDegrees = raHours * 15.0;
  status.decDegrees = decDegrees;
  status.state = state;
  return status;
}

class ArrivalJudgeTest : public testing::Test {
 protected:
  static constexpr MonotonicTime kAcknowledged{std::chrono::seconds(100)};
  static MonotonicTime After(int ms) { return kAcknowledged + milliseconds(ms); }
  static ArrivalJudge For(Goal goal) { return {goal, kTarget, kTolerance, kAcknowledged}; }
  ArrivalJudge judge = For(Goal::kSky);
  const MountStatus atTarget = At(5.5, 22.0, velquin::kStateTracking);
  const MountStatus slewing = At(4.0, 10.0, velquin::kStateSlewing);
  const MountStatus elsewhere = At(4.0, 10.0, velquin::kStateTracking);
};

TEST_F(ArrivalJudgeTest, ArrivesWhenASlewHasEndedAtTheTarget) {
  EXPECT_EQ(judge.Look(slewing, After(10)), Verdict::kUnderWay);
  EXPECT_FALSE(judge.WantsAnother());
  EXPECT_EQ(judge.Look(atTarget, After(20)), Verdict::kUnderWay);
  EXPECT_TRUE(judge.WantsAnother());
  EXPECT_EQ(judge.Look(atTarget, After(21)), Verdict::kArrived);
}

// A bit that was flipped on its way makes "at rest" of "slewing".
TEST_F(ArrivalJudgeTest, TakesTwoStatusesForAnArrival) {
  EXPECT_EQ(judge.Look(slewing, After(10)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(20)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(slewing, After(30)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(40)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(50)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(60)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(70)), Verdict::kArrived);
}

TEST_F(ArrivalJudgeTest, WaitsForAControllerThatIsSlowToBegin) {
  EXPECT_EQ(judge.Look(elsewhere, After(10)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(900)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(slewing, After(950)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(960)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(970)), Verdict::kArrived);
}

TEST_F(ArrivalJudgeTest, GivesUpAMountThatNeverBegins) {
  EXPECT_EQ(judge.Look(elsewhere, After(999)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(1000)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(1100)), Verdict::kElsewhere);
}

TEST_F(ArrivalJudgeTest, TakesTwoStatusesForAFailure) {
  EXPECT_EQ(judge.Look(slewing, After(10)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(20)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(slewing, After(30)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(40)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(50)), Verdict::kElsewhere);
}

TEST_F(ArrivalJudgeTest, ArrivesWhereTheMountAlreadyWasAfterAMoment) {
  EXPECT_EQ(judge.Look(atTarget, After(1)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(200)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(201)), Verdict::kArrived);
}

TEST_F(ArrivalJudgeTest, CountsTheMomentAnewWhenTheMountLeaves) {
  EXPECT_EQ(judge.Look(atTarget, After(1)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(elsewhere, After(150)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(250)), Verdict::kUnderWay);
}

TEST_F(ArrivalJudgeTest, AcceptsAMountAtRestAtItsTargetButNotAParkedOne) {
  judge.Look(slewing, After(10));
  EXPECT_EQ(judge.Look(At(5.5, 22.0, velquin::kStateParked), After(20)), Verdict::kUnderWay);
  judge.Look(At(5.5, 22.0, velquin::kStateAtRest), After(30));
  EXPECT_EQ(judge.Look(At(5.5, 22.0, velquin::kStateAtRest), After(40)), Verdict::kArrived);
}

TEST_F(ArrivalJudgeTest, MeasuresTheToleranceOnTheSky) {
  judge.Look(slewing, After(10));
  // 0.03 degrees of right ascension are 0.0278 degrees at this declination.
  EXPECT_EQ(judge.Look(At(5.5 + 0.03 / 15.0, 22.0, 1), After(20)), Verdict::kUnderWay);
  judge.Look(At(5.5 + 0.02 / 15.0, 22.0, 1), After(30));
  EXPECT_EQ(judge.Look(At(5.5 + 0.02 / 15.0, 22.0, 1), After(40)), Verdict::kArrived);
}

TEST_F(ArrivalJudgeTest, WantsAMountThatTracksAfterAnUnpark) {
  judge = For(Goal::kTrack);
  judge.Look(slewing, After(10));
  EXPECT_EQ(judge.Look(At(5.5, 22.0, velquin::kStateAtRest), After(20)), Verdict::kUnderWay);
  judge.Look(atTarget, After(30));
  EXPECT_EQ(judge.Look(atTarget, After(40)), Verdict::kArrived);
}

TEST_F(ArrivalJudgeTest, WantsAParkedMountAfterAPark) {
  judge = For(Goal::kPark);
  judge.Look(slewing, After(10));
  EXPECT_EQ(judge.Look(atTarget, After(20)), Verdict::kUnderWay);
  EXPECT_EQ(judge.Look(atTarget, After(30)), Verdict::kElsewhere);
  judge = For(Goal::kPark);
  judge.Look(slewing, After(10));
  judge.Look(At(0.0, 0.0, velquin::kStateParked), After(20));
  EXPECT_EQ(judge.Look(At(0.0, 0.0, velquin::kStateParked), After(30)), Verdict::kArrived);
}

TEST_F(ArrivalJudgeTest, WantsAMountAtRestWithItsCircleAtNinetyAtHome) {
  MountStatus home = At(1.0, 90.0, velquin::kStateAtRest);
  judge = For(Goal::kHome);
  judge.Look(slewing, After(10));
  home.axisAngleDegrees = 60.0;
  EXPECT_EQ(judge.Look(home, After(20)), Verdict::kUnderWay);
  home.axisAngleDegrees = 90.01;
  judge.Look(home, After(30));
  EXPECT_EQ(judge.Look(home, After(40)), Verdict::kArrived);
}

TEST(SeparationDegrees, IsTheAngleOnTheSky) {
  EXPECT_NEAR(SeparationDegrees({0.0, 0.0}, {6.0, 0.0}), 90.0, 1e-12);
  EXPECT_NEAR(SeparationDegrees({0.0, 90.0}, {17.3, 90.0}), 0.0, 1e-12);
  EXPECT_NEAR(SeparationDegrees({23.999, 10.0}, {0.001, 10.0}), 0.03 * std::cos(10.0 / 57.29578),
              1e-6);
  EXPECT_NEAR(SeparationDegrees({0.0, -90.0}, {3.0, 90.0}), 180.0, 1e-6);
}

}  // namespace
