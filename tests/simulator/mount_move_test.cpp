// SPDX-License-Identifier: MIT
// Hand moves and guide pulses of the simulated mount.
#include "tests/simulator/mount_fixture.h"

namespace simulator {
namespace {

using MountMove = Mount;

constexpr double kRate = 15.041067 * kArcSecond;  // the sidereal rate, degrees per second

TEST_F(MountMove, GoesRateTimesDurationAndEndsByItself) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  ASSERT_TRUE(mount.Move(1.0, 25.5, 50.5));
  EXPECT_TRUE(mount.IsMovedByHand());
  mount.Advance(10.0);
  EXPECT_FALSE(mount.IsMovedByHand());
  ExpectNear(mount.Position(), {was.raHours + 25.5 * kRate / 15.0, was.decDegrees + 50.5 * kRate});
  EXPECT_EQ(mount.State(), MountState::kTracking);
}

TEST_F(MountMove, IsHalfDoneAfterHalfItsTime) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  ASSERT_TRUE(mount.Move(1.0, 0.0, -100.0));
  mount.Advance(0.5);
  EXPECT_TRUE(mount.IsMovedByHand());
  ExpectNear(mount.Position(), {was.raHours, was.decDegrees - 50.0 * kRate});
}

TEST_F(MountMove, SignsAreEastAndNorthOnEitherSideOfThePier) {
  for (const double hourAngle : {-40.0, 40.0}) {
    TrackAt(hourAngle, 20.0);
    const SkyPosition was = mount.Position();
    ASSERT_TRUE(mount.Move(1.0, 10.0, 20.0));
    mount.Advance(1.0);
    EXPECT_NEAR(RaDifference(was.raHours, mount.Position().raHours) * 15.0, 10.0 * kRate, 1e-6);
    EXPECT_NEAR(mount.Position().decDegrees - was.decDegrees, 20.0 * kRate, 1e-6);
  }
}

TEST_F(MountMove, NorthIsNorthInTheSouthToo) {
  mount = MountModel(Settings(-33.9));
  for (const double hourAngle : {-40.0, 40.0}) {
    TrackAt(hourAngle, -20.0);
    ASSERT_TRUE(mount.Move(1.0, 0.0, 20.0));
    mount.Advance(1.0);
    EXPECT_NEAR(mount.Position().decDegrees, -20.0 + 20.0 * kRate, 1e-6);
  }
}

TEST_F(MountMove, ANewMoveTakesTheOldOnesPlace) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  ASSERT_TRUE(mount.Move(1.0, 0.0, 100.0));
  mount.Advance(0.25);
  ASSERT_TRUE(mount.Move(1.0, 0.0, -100.0));
  mount.Advance(5.0);
  EXPECT_NEAR(mount.Position().decDegrees, was.decDegrees - 75.0 * kRate, 1e-6);
}

TEST_F(MountMove, EndsWithBothRatesZero) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  ASSERT_TRUE(mount.Move(1.0, 0.0, 100.0));
  mount.Advance(0.25);
  ASSERT_TRUE(mount.Move(1.0, 0.0, 0.0));
  EXPECT_FALSE(mount.IsMovedByHand());
  mount.Advance(5.0);
  EXPECT_NEAR(mount.Position().decDegrees, was.decDegrees + 25.0 * kRate, 1e-6);
}

TEST_F(MountMove, TellsOnceHowLongItLasted) {
  TrackAt(-40.0, 20.0);
  EXPECT_FALSE(mount.TakeEndedMove().has_value());
  ASSERT_TRUE(mount.Move(1.0, 0.0, 100.0));
  mount.Advance(0.25);
  EXPECT_FALSE(mount.TakeEndedMove().has_value());
  mount.Stop();
  const auto ended = mount.TakeEndedMove();
  ASSERT_TRUE(ended.has_value());
  EXPECT_EQ(ended->askedSeconds, 1.0);
  EXPECT_NEAR(ended->appliedSeconds, 0.25, 1e-9);
  EXPECT_FALSE(mount.TakeEndedMove().has_value());
}

TEST_F(MountMove, MovesAMountAtRestAgainstTheGround) {
  mount.GotoAxes({300.0, 70.0}, MountState::kStopped);
  Arrive();
  ASSERT_TRUE(mount.Move(2.0, 100.0, 0.0));
  mount.Advance(10.0);
  EXPECT_NEAR(mount.Axes().polarDegrees, 300.0 - 200.0 * kRate, 1e-6);
  EXPECT_EQ(mount.State(), MountState::kStopped);
}

TEST_F(MountMove, IsRefusedWhileSlewingAndParked) {
  mount.GotoAxes(MountModel::kPark, MountState::kParked);
  EXPECT_FALSE(mount.Move(1.0, 10.0, 0.0));
  Arrive();
  EXPECT_FALSE(mount.Move(1.0, 10.0, 0.0));
  mount.Advance(2.0);
  EXPECT_EQ(mount.Axes().polarDegrees, 270.0);
}

TEST_F(MountMove, WithBothRatesZeroStopsASlewToo) {
  ASSERT_EQ(mount.GotoSky(At(-40.0, 20.0)), SlewAnswer::kAccepted);
  mount.Advance(3.0);
  EXPECT_TRUE(mount.Move(1.0, 0.0, 0.0));
  EXPECT_LT(Arrive(), 1.3);
}

TEST_F(MountMove, EndsAtThePoleAndAtTheMechanicalLimit) {
  TrackAt(-20.0, 60.0);
  ASSERT_TRUE(mount.Move(3600.0, 0.0, 1000.0));
  mount.Advance(60.0);
  EXPECT_EQ(mount.Position().decDegrees, 90.0);
  ASSERT_TRUE(mount.Move(3600.0, 1000.0, 0.0));
  mount.Advance(60.0);
  EXPECT_EQ(mount.Axes().polarDegrees, 150.0);
}

TEST_F(MountMove, OfNoDurationMovesNothing) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  EXPECT_TRUE(mount.Move(0.0, 100.0, 100.0));
  EXPECT_FALSE(mount.IsMovedByHand());
  mount.Advance(1.0);
  ExpectNear(mount.Position(), was);
}

}  // namespace
}  // namespace simulator
