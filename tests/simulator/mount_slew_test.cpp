// SPDX-License-Identifier: MIT
// Where the simulated mount goes when it is sent, on which side of the pier, and how it stops.
#include "tests/simulator/mount_fixture.h"

namespace simulator {
namespace {

using MountSlew = Mount;

TEST_F(MountSlew, GoesToAStarAndTracksIt) {
  const SkyPosition star = At(-40.0, 20.0);
  ASSERT_EQ(mount.GotoSky(star), SlewAnswer::kAccepted);
  EXPECT_EQ(mount.State(), MountState::kSlewing);
  const double seconds = Arrive();
  EXPECT_EQ(mount.State(), MountState::kTracking);
  ExpectNear(mount.Position(), star);
  EXPECT_NEAR(seconds, 70.0 / 4.0 + 4.0 / 4.0, 0.2);  // from the pole; the polar axis has 50 only
}

TEST_F(MountSlew, NeverExceedsTheTopRateNorPassesTheTarget) {
  TrackAt(-80.0, 30.0);
  const SkyPosition star = At(-20.0, 30.0);
  ASSERT_EQ(mount.GotoSky(star), SlewAnswer::kAccepted);
  double left = RaDifference(star.raHours, mount.Position().raHours);
  while (mount.State() == MountState::kSlewing) {
    mount.Advance(0.05);
    const double now = RaDifference(star.raHours, mount.Position().raHours);
    EXPECT_LE((left - now) * 15.0, 4.0 * 0.05 + 1e-6);
    EXPECT_GE(now, -1e-9);
    left = now;
  }
  ExpectNear(mount.Position(), star);
}

TEST_F(MountSlew, TakesTheShortWayAcrossZeroHours) {
  // Move the clock until 0 h of right ascension stands in the east.
  const double sidereal = SiderealDegrees(mount.UtcSeconds(), 139.767);
  mount.SetUtcSeconds(mount.UtcSeconds() +
                      WrapDegrees(320.0 - sidereal) / kSiderealDegreesPerSecond);
  ASSERT_EQ(mount.GotoSky({23.9, 20.0}), SlewAnswer::kAccepted);
  Arrive();
  ASSERT_EQ(mount.GotoSky({0.1, 20.0}), SlewAnswer::kAccepted);
  EXPECT_LT(Arrive(), 2.5);  // 3 degrees
  ExpectNear(mount.Position(), {0.1, 20.0});
}

TEST_F(MountSlew, LooksEastAtEasternStarsAndWestAtWesternOnes) {
  TrackAt(-40.0, 20.0);
  EXPECT_TRUE(LooksEast());
  TrackAt(40.0, 20.0);
  EXPECT_FALSE(LooksEast());
  ExpectNear(mount.Position(), At(40.0, 20.0), 0.5);
  TrackAt(40.0, 85.0);
  EXPECT_FALSE(LooksEast());
  TrackAt(-40.0, 20.0);
  EXPECT_TRUE(LooksEast());
}

TEST_F(MountSlew, ShowsTheSideInTheDeclinationCircle) {
  TrackAt(-40.0, 20.0);
  EXPECT_NEAR(mount.DeclinationCircleDegrees(), 20.0, 1e-9);
  TrackAt(40.0, 20.0);
  EXPECT_NEAR(mount.DeclinationCircleDegrees(), 160.0, 1e-9);
}

TEST_F(MountSlew, KeepsItsSideShortlyPastTheMeridian) {
  ASSERT_TRUE(mount.SetMeridian(0.0, 3.0));
  TrackAt(-10.0, 20.0);
  TrackAt(2.5, 20.0);
  EXPECT_TRUE(LooksEast());
  TrackAt(3.5, 20.0);
  EXPECT_FALSE(LooksEast());
  TrackAt(-2.5, 20.0);
  EXPECT_FALSE(LooksEast());
  TrackAt(-3.5, 20.0);
  EXPECT_TRUE(LooksEast());
}

TEST_F(MountSlew, ChangesSideAtTheMeridianWhenToldSo) {
  ASSERT_TRUE(mount.SetMeridian(0.0, 0.0));
  TrackAt(-10.0, 20.0);
  TrackAt(0.5, 20.0);
  EXPECT_FALSE(LooksEast());
}

TEST_F(MountSlew, DoesNotGoWhereTrackingWouldStopAtOnce) {
  ASSERT_TRUE(mount.SetMeridian(1.0, 10.0));
  TrackAt(-10.0, 20.0);
  TrackAt(5.0, 20.0);
  EXPECT_FALSE(LooksEast());
}

TEST_F(MountSlew, ReachesEveryPlaceAboveTheHorizonAndNoneBelow) {
  int up = 0;
  int down = 0;
  for (double dec = -85.0; dec <= 85.0; dec += 17.0) {
    for (double hourAngle = -179.0; hourAngle < 180.0; hourAngle += 23.0) {
      MountModel fresh(Settings());
      const SkyPosition star = At(fresh, hourAngle, dec);
      const bool isUp = AltitudeDegrees(35.681, hourAngle, dec) >= 0.0;
      (isUp ? up : down) += 1;
      ASSERT_EQ(fresh.GotoSky(star), isUp ? SlewAnswer::kAccepted : SlewAnswer::kBelowHorizon);
      fresh.Advance(120.0);
      if (isUp) ExpectNear(fresh.Position(), star);
    }
  }
  EXPECT_GT(up, 40);
  EXPECT_GT(down, 40);
}

TEST_F(MountSlew, LeavesTheMountAloneWhenTheTargetIsBelowTheHorizon) {
  TrackAt(-40.0, 20.0);
  const SkyPosition was = mount.Position();
  EXPECT_EQ(mount.GotoSky(At(-150.0, -20.0)), SlewAnswer::kBelowHorizon);
  EXPECT_EQ(mount.State(), MountState::kTracking);
  mount.Advance(5.0);
  ExpectNear(mount.Position(), was);
}

TEST_F(MountSlew, JudgesTheHorizonByClockAndSite) {
  const SkyPosition star = At(-120.0, 0.0);
  EXPECT_EQ(mount.GotoSky(star), SlewAnswer::kBelowHorizon);
  mount.SetUtcSeconds(mount.UtcSeconds() + 3.0 * 3600.0);
  EXPECT_EQ(mount.GotoSky(star), SlewAnswer::kAccepted);
  mount.SetSite({139.767 - 60.0, 35.681, 5});
  EXPECT_EQ(mount.GotoSky(star), SlewAnswer::kBelowHorizon);
}

TEST_F(MountSlew, MirrorsTheDeclinationAxisInTheSouth) {
  mount = MountModel(Settings(-33.9));
  EXPECT_NEAR(mount.Position().decDegrees, -90.0, 1e-9);
  TrackAt(-40.0, -50.0);
  ExpectNear(mount.Position(), At(-40.0, -50.0), 0.5);
  EXPECT_TRUE(LooksEast());
  TrackAt(40.0, 10.0);
  EXPECT_FALSE(LooksEast());
  EXPECT_NEAR(mount.Position().decDegrees, 10.0, 1e-9);
}

TEST_F(MountSlew, BrakesWhenStoppedAndTracksFromThere) {
  TrackAt(-80.0, 30.0);
  ASSERT_EQ(mount.GotoSky(At(-20.0, 30.0)), SlewAnswer::kAccepted);
  mount.Advance(5.0);
  const double polar = mount.Axes().polarDegrees;
  mount.Stop();
  EXPECT_EQ(mount.State(), MountState::kSlewing);
  EXPECT_LT(Arrive(), 1.3);  // from 4 degrees per second at 4 per second squared
  EXPECT_EQ(mount.State(), MountState::kTracking);
  EXPECT_NEAR(mount.Axes().polarDegrees - polar, 2.0, 0.1);
  const SkyPosition here = mount.Position();
  mount.Advance(60.0);
  ExpectNear(mount.Position(), here);
}

TEST_F(MountSlew, StoppingTwiceIsStoppingOnce) {
  ASSERT_EQ(mount.GotoSky(At(-40.0, 20.0)), SlewAnswer::kAccepted);
  mount.Advance(3.0);
  mount.Stop();
  mount.Advance(0.5);
  mount.Stop();
  EXPECT_LT(Arrive(), 0.8);
}

TEST_F(MountSlew, StoppingWithoutASlewChangesNothing) {
  mount.Stop();
  EXPECT_EQ(mount.State(), MountState::kStopped);
  TrackAt(-40.0, 20.0);
  mount.Stop();
  EXPECT_EQ(mount.State(), MountState::kTracking);
}

TEST_F(MountSlew, ANewTargetTakesTheOldOnesPlace) {
  ASSERT_EQ(mount.GotoSky(At(-40.0, 20.0)), SlewAnswer::kAccepted);
  mount.Advance(3.0);
  const SkyPosition other = At(-80.0, 50.0);
  ASSERT_EQ(mount.GotoSky(other), SlewAnswer::kAccepted);
  Arrive();
  ExpectNear(mount.Position(), other);
}

TEST_F(MountSlew, ParksWithoutTrackingAndComesBack) {
  TrackAt(-40.0, 20.0);
  ASSERT_EQ(mount.GotoAxes(MountModel::kPark, MountState::kParked), SlewAnswer::kAccepted);
  EXPECT_EQ(mount.State(), MountState::kSlewing);
  Arrive();
  EXPECT_EQ(mount.State(), MountState::kParked);
  mount.Advance(600.0);
  EXPECT_EQ(mount.Axes().polarDegrees, 270.0);
  EXPECT_EQ(mount.Axes().fromPoleDegrees, 30.0);

  const SkyPosition here = mount.Position();
  ASSERT_EQ(mount.GotoSky(here), SlewAnswer::kAccepted);
  mount.Advance(1.0);
  EXPECT_EQ(mount.State(), MountState::kTracking);
  mount.Advance(600.0);
  ExpectNear(mount.Position(), here);
}

TEST_F(MountSlew, AParkedMountIsNotStoppedOutOfParking) {
  mount.GotoAxes(MountModel::kPark, MountState::kParked);
  Arrive();
  mount.Stop();
  EXPECT_EQ(mount.State(), MountState::kParked);
}

TEST_F(MountSlew, RestsAtItsHomePosition) {
  TrackAt(40.0, 20.0);
  ASSERT_EQ(mount.GotoAxes(MountModel::kHome, MountState::kStopped), SlewAnswer::kAccepted);
  Arrive();
  EXPECT_EQ(mount.State(), MountState::kStopped);
  EXPECT_EQ(mount.Axes().polarDegrees, 270.0);
  EXPECT_EQ(mount.Axes().fromPoleDegrees, 0.0);
}

TEST_F(MountSlew, TakesAxisReadingsOfAnyTurnWithinItsReach) {
  EXPECT_EQ(mount.GotoAxes({0.0, 0.0}, MountState::kParked), SlewAnswer::kAccepted);
  Arrive();
  EXPECT_EQ(mount.Axes().polarDegrees, 360.0);
  EXPECT_EQ(mount.GotoAxes({-90.0, 0.0}, MountState::kParked), SlewAnswer::kAccepted);
  EXPECT_EQ(mount.GotoAxes({90.0, 0.0}, MountState::kParked), SlewAnswer::kOutOfReach);
  EXPECT_EQ(mount.GotoAxes({270.0, 181.0}, MountState::kParked), SlewAnswer::kOutOfReach);
}

}  // namespace
}  // namespace simulator
