// SPDX-License-Identifier: MIT
// How the simulated mount follows the sky, and what clock, site and alignment do to its position.
#include "tests/simulator/mount_fixture.h"

namespace simulator {
namespace {

using MountTracking = Mount;

constexpr double kHour = 3600.0;

TEST_F(MountTracking, StartsAtTheVisiblePoleAtRest) {
  EXPECT_EQ(mount.State(), MountState::kStopped);
  EXPECT_NEAR(mount.Position().decDegrees, 90.0, 1e-9);
  EXPECT_NEAR(mount.AltitudeOf(mount.Position()), 35.681, 1e-6);
}

TEST_F(MountTracking, KeepsRightAscensionWhileTheHourAngleGrows) {
  TrackAt(-40.0, 20.0);
  const SkyPosition star = mount.Position();
  const double polar = mount.Axes().polarDegrees;
  mount.Advance(2.0 * kHour);
  ExpectNear(mount.Position(), star);
  EXPECT_NEAR(mount.Axes().polarDegrees - polar, 2.0 * 15.041067, 1e-4);
}

TEST_F(MountTracking, DoesNotDependOnHowOftenItIsAdvanced) {
  TrackAt(-40.0, 20.0);
  const SkyPosition star = mount.Position();
  for (int i = 0; i < 36000; ++i) mount.Advance(0.1);
  ExpectNear(mount.Position(), star);
}

TEST_F(MountTracking, AtRestTheSkyDriftsThrough) {
  TrackAt(-40.0, 20.0);
  ASSERT_EQ(mount.GotoAxes({300.0, 70.0}, MountState::kStopped), SlewAnswer::kAccepted);
  Arrive();
  const SkyPosition before = mount.Position();
  mount.Advance(100.0);
  const double drift = RaDifference(before.raHours, mount.Position().raHours);
  EXPECT_NEAR(drift / kSecondOfRa, 100.2738, 0.001);  // a solar second is 1.002738 sidereal ones
  EXPECT_EQ(mount.Position().decDegrees, before.decDegrees);
}

TEST_F(MountTracking, CountsRightAscensionOnFromZeroAfterTwentyFour) {
  mount.GotoAxes({300.0, 70.0}, MountState::kStopped);
  Arrive();
  for (int i = 0; i < 96; ++i) {
    mount.Advance(900.0);
    EXPECT_GE(mount.Position().raHours, 0.0);
    EXPECT_LT(mount.Position().raHours, 24.0);
  }
}

TEST_F(MountTracking, EndsAtTheMechanicalLimitPastTheMeridian) {
  TrackAt(-10.0, 20.0);
  mount.Advance(2.6 * kHour);  // at hour angle +29
  EXPECT_EQ(mount.State(), MountState::kTracking);
  mount.Advance(0.2 * kHour);
  EXPECT_EQ(mount.State(), MountState::kStopped);
  EXPECT_TRUE(mount.StoppedAtLimit());
  EXPECT_NEAR(mount.Axes().polarDegrees, 390.0, 1e-9);
}

TEST_F(MountTracking, EndsAtTheMeridianStopWhenThatIsSet) {
  ASSERT_TRUE(mount.SetMeridian(5.0, 3.0));
  TrackAt(-10.0, 20.0);
  mount.Advance(1.1 * kHour);  // would be at hour angle +6.5
  EXPECT_EQ(mount.State(), MountState::kStopped);
  EXPECT_NEAR(mount.Axes().polarDegrees, 365.0, 1e-9);
  TrackAt(-10.0, 20.0);
  EXPECT_FALSE(mount.StoppedAtLimit());
}

TEST_F(MountTracking, HasMeridianValuesWithinTheMechanics) {
  EXPECT_FALSE(mount.SetMeridian(-1.0, 3.0));
  EXPECT_FALSE(mount.SetMeridian(0.0, 31.0));
  EXPECT_EQ(mount.MeridianStopDegrees(), 0.0);
  EXPECT_EQ(mount.MeridianGotoDegrees(), 3.0);
}

TEST_F(MountTracking, ANewClockMovesTheSkyAndNotTheAxes) {
  TrackAt(-40.0, 20.0);
  const SkyPosition before = mount.Position();
  const AxisPair axes = mount.Axes();
  mount.SetUtcSeconds(mount.UtcSeconds() + 3600.0);
  EXPECT_EQ(mount.Axes().polarDegrees, axes.polarDegrees);
  EXPECT_NEAR(RaDifference(before.raHours, mount.Position().raHours), 1.002738, 1e-5);
}

TEST_F(MountTracking, ASiteFartherEastSeesTheSkyLater) {
  TrackAt(-40.0, 20.0);
  const SkyPosition before = mount.Position();
  mount.SetSite({139.767 + 15.0, 35.681, 9});
  EXPECT_NEAR(RaDifference(before.raHours, mount.Position().raHours), 1.0, 1e-9);
}

TEST_F(MountTracking, TheClockRunsWhileTimePasses) {
  const double before = mount.UtcSeconds();
  mount.Advance(12.5);
  EXPECT_NEAR(mount.UtcSeconds() - before, 12.5, 1e-5);
}

TEST_F(MountTracking, AlignmentMakesThePositionTrueAndKeepsIt) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  const SkyPosition truth = {was.raHours + 0.05, was.decDegrees - 0.4};
  ASSERT_TRUE(mount.Align(truth));
  ExpectNear(mount.Position(), truth);
  mount.Advance(kHour);
  ExpectNear(mount.Position(), truth);

  const SkyPosition next = At(-60.0, 45.0);
  ASSERT_EQ(mount.GotoSky(next), SlewAnswer::kAccepted);
  Arrive();
  ExpectNear(mount.Position(), next);
}

TEST_F(MountTracking, ForgettingTheAlignmentBringsTheOldPositionBack) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  ASSERT_TRUE(mount.Align({was.raHours + 0.05, was.decDegrees - 0.4}));
  ASSERT_TRUE(mount.Align({was.raHours + 0.07, was.decDegrees + 0.1}));
  mount.ResetAlignment();
  ExpectNear(mount.Position(), was);
  mount.ResetAlignment();
  ExpectNear(mount.Position(), was);
}

// Absurd alignments with slews between them once left the axis more than a turn away, and a status
// with a declination of -417 degrees.
TEST_F(MountTracking, ForgettingAbsurdAlignmentsLeavesADeclinationThatThereIs) {
  for (int i = 0; i < 3; ++i) {
    ASSERT_TRUE(mount.Align({5.0, -80.0}));
    ASSERT_EQ(mount.GotoSky({5.0, 89.0}), SlewAnswer::kAccepted);
    Arrive();
  }
  mount.ResetAlignment();
  EXPECT_GE(mount.Position().decDegrees, -90.0);
  EXPECT_LE(mount.Position().decDegrees, 90.0);
  EXPECT_LE(std::fabs(mount.Axes().fromPoleDegrees), 180.0);
}

TEST_F(MountTracking, ReinitialisingForgetsTheAlignmentToo) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  ASSERT_TRUE(mount.Align({was.raHours + 0.05, was.decDegrees}));
  mount.Reinitialise();
  ExpectNear(mount.Position(), was);
  EXPECT_EQ(mount.State(), MountState::kTracking);
}

TEST_F(MountTracking, AlignmentIsRefusedWhileSlewingAndParked) {
  ASSERT_EQ(mount.GotoSky(At(-40.0, 20.0)), SlewAnswer::kAccepted);
  EXPECT_FALSE(mount.Align(At(-40.0, 20.0)));
  ASSERT_EQ(mount.GotoAxes(MountModel::kPark, MountState::kParked), SlewAnswer::kAccepted);
  Arrive();
  EXPECT_FALSE(mount.Align(At(-40.0, 20.0)));
}

}  // namespace
}  // namespace simulator
