// SPDX-License-Identifier: MIT
// Our astronomy against ERFA, the library of the astronomers' union's standards.
#include "gateways/mount/sky.h"

#include <erfa.h>
#include <gmock/gmock.h>

#include <cmath>
#include <random>

#include "simulator/mount_model.h"

namespace {

using velquin::Horizontal;
using velquin::PierSide;

constexpr double kMjdZero = 2400000.5;
constexpr double kMjd1950 = 33282.0;
constexpr double kMjd2100 = 88069.0;
constexpr double kDegrees = 180.0 / 3.14159265358979323846;

/// @return the difference of two angles of so many units a turn, in arcseconds.
double ArcsecondsBetween(double one, double other, double turn) {
  return std::remainder(one - other, turn) / turn * 1296000.0;
}

// Terrestrial time as ERFA wants it; a minute more or less makes no difference here.
double Tt(double mjd) {
  return mjd + 69.2 / 86400.0;
}

double ErfaSiderealHours(double mjd) {
  return eraGst06a(kMjdZero, mjd, kMjdZero, Tt(mjd)) * kDegrees / 15.0;
}

class SkyTest : public testing::Test {
 protected:
  double Draw(double least, double most) {
    return std::uniform_real_distribution<double>(least, most)(random);
  }
  std::mt19937_64 random{1};
};

TEST_F(SkyTest, SiderealTimeIsThatOfErfaToATenthOfAnArcsecond) {
  double worst = 0.0;
  for (int i = 0; i < 5'000; ++i) {
    const double mjd = Draw(kMjd1950, kMjd2100);
    const double difference =
        ArcsecondsBetween(velquin::GreenwichSiderealHours(mjd), ErfaSiderealHours(mjd), 24.0);
    worst = std::max(worst, std::fabs(difference));
  }
  EXPECT_LT(worst, 0.1);
  std::printf("[ measured ] sidereal time: at most %.4f arcseconds\n", worst);
}

TEST_F(SkyTest, LocalSiderealTimeStaysWithinADay) {
  for (int i = 0; i < 1'000; ++i) {
    const double mjd = Draw(kMjd1950, kMjd2100);
    const double longitude = Draw(-180.0, 180.0);
    const double hours = velquin::LocalSiderealHours(mjd, longitude);
    ASSERT_GE(hours, 0.0);
    ASSERT_LT(hours, 24.0);
    ASSERT_LT(std::fabs(ArcsecondsBetween(hours, ErfaSiderealHours(mjd) + longitude / 15.0, 24.0)),
              0.1);
  }
}

TEST_F(SkyTest, AltitudeAndAzimuthAreThoseOfErfa) {
  double worst = 0.0;
  for (int i = 0; i < 20'000; ++i) {
    const double hourAngle = Draw(-12.0, 12.0);
    const double dec = Draw(-90.0, 90.0);
    const double latitude = Draw(-90.0, 90.0);
    double azimuth = 0.0, altitude = 0.0;
    eraHd2ae(hourAngle * 15.0 / kDegrees, dec / kDegrees, latitude / kDegrees, &azimuth, &altitude);
    const Horizontal ours = velquin::ToHorizontal(latitude, hourAngle, dec);
    worst = std::max(worst, std::fabs(ours.altitudeDegrees - altitude * kDegrees) * 3600.0);
    const double onSky =
        ArcsecondsBetween(ours.azimuthDegrees, azimuth * kDegrees, 360.0) * std::cos(altitude);
    worst = std::max(worst, std::fabs(onSky));
  }
  EXPECT_LT(worst, 1e-4);
}

// The whole way: a star of the catalogue to its place of date, and that to the altitude, by ERFA
// with all that it knows (but refraction), and by us from the place of date.
TEST_F(SkyTest, AltitudeIsThatOfErfaToAnArcsecond) {
  double worst = 0.0;
  for (int i = 0; i < 2'000; ++i) {
    const double mjd = Draw(kMjd1950, kMjd2100);
    const double latitude = Draw(-80.0, 80.0);
    const double longitude = Draw(-180.0, 180.0);
    double ri = 0.0, di = 0.0, eo = 0.0;
    eraAtci13(Draw(0.0, 6.28), Draw(-1.5, 1.5), 0.0, 0.0, 0.0, 0.0, kMjdZero, Tt(mjd), &ri, &di,
              &eo);
    // With universal time as it is: around a leap second UTC would be up to a second off.
    eraASTROM astrom = {};
    eraApio(eraSp00(kMjdZero, Tt(mjd)), eraEra00(kMjdZero, mjd), longitude / kDegrees,
            latitude / kDegrees, 0.0, 0.0, 0.0, 0.0, 0.0, &astrom);
    double azimuth = 0.0, zenith = 0.0, hourAngle = 0.0, dec = 0.0, ra = 0.0;
    eraAtioq(ri, di, &astrom, &azimuth, &zenith, &hourAngle, &dec, &ra);
    const double raHours = (ri - eo) * kDegrees / 15.0;
    const double sidereal = velquin::LocalSiderealHours(mjd, longitude);
    const Horizontal ours =
        velquin::ToHorizontal(latitude, velquin::HourAngleHours(sidereal, raHours), di * kDegrees);
    const double altitude = 90.0 - zenith * kDegrees;
    worst = std::max(worst, std::fabs(ours.altitudeDegrees - altitude) * 3600.0);
  }
  EXPECT_LT(worst, 1.0);
  std::printf("[ measured ] altitude: at most %.3f arcseconds\n", worst);
}

TEST_F(SkyTest, HourAngleIsPositiveWestOfTheMeridian) {
  EXPECT_DOUBLE_EQ(velquin::HourAngleHours(1.0, 23.0), 2.0);
  EXPECT_DOUBLE_EQ(velquin::HourAngleHours(23.0, 1.0), -2.0);
  EXPECT_DOUBLE_EQ(velquin::HourAngleHours(12.0, 0.0), -12.0);
}

TEST_F(SkyTest, AzimuthRunsFromNorthThroughEast) {
  EXPECT_NEAR(velquin::ToHorizontal(45.0, -6.0, 0.0).azimuthDegrees, 90.0, 1e-9);
  EXPECT_NEAR(velquin::ToHorizontal(45.0, 0.0, 0.0).azimuthDegrees, 180.0, 1e-9);
  EXPECT_NEAR(velquin::ToHorizontal(45.0, 6.0, 0.0).azimuthDegrees, 270.0, 1e-9);
  EXPECT_NEAR(velquin::ToHorizontal(45.0, 3.0, 90.0).altitudeDegrees, 45.0, 1e-9);
}

TEST_F(SkyTest, AirMassGrowsTowardsTheHorizon) {
  EXPECT_NEAR(velquin::AirMass(90.0), 1.0, 1e-3);
  EXPECT_NEAR(velquin::AirMass(30.0), 1.995, 5e-3);
  EXPECT_NEAR(velquin::AirMass(10.0), 5.6, 0.05);
  EXPECT_NEAR(velquin::AirMass(0.0), 38.75, 0.05);
  EXPECT_TRUE(std::isnan(velquin::AirMass(-1.0)));
}

// The model of the simulated mount decides: each start, each target, each setting.
TEST_F(SkyTest, ThePierSideIsTheOneThatAGotoChooses) {
  int stayed = 0;
  for (int i = 0; i < 20'000; ++i) {
    simulator::MountSettings settings;
    settings.utcSeconds = 60000.25 * 86400.0;
    settings.limits = {1e6, 1e9};
    simulator::MountModel model(settings);
    const double stop = i % 3 == 0 ? 0.0 : Draw(0.0, 30.0);
    const double past = Draw(0.0, 30.0);
    ASSERT_TRUE(model.SetMeridian(stop, past));
    const auto sidereal =
        simulator::SiderealDegrees(settings.utcSeconds, settings.site.longitudeDegrees) / 15.0;
    const auto goTo = [&](double hourAngle, double dec) {
      const double ra = std::fmod(sidereal - hourAngle + 48.0, 24.0);
      const bool accepted = model.GotoSky({ra, dec}) == simulator::SlewAnswer::kAccepted;
      if (accepted) model.Advance(0.05);
      return accepted;
    };
    if (i % 5 != 0 && !goTo(Draw(-12.0, 12.0), Draw(40.0, 89.0))) continue;
    const double angleBefore = model.DeclinationCircleDegrees();
    const double hourAngle = Draw(-12.0, 12.0);
    const PierSide expected = velquin::SideAfterGoto(hourAngle, angleBefore, {stop, past});
    if (!goTo(hourAngle, Draw(60.0, 89.0))) continue;
    ASSERT_EQ(model.State(), simulator::MountState::kTracking);
    const PierSide side =
        model.DeclinationCircleDegrees() <= 90.0 ? PierSide::kWest : PierSide::kEast;
    // A target on the very edge may fall to either side with the time that the slew took.
    const double edge = std::fabs(std::remainder(
        std::fabs(hourAngle * 15.0) - std::min(past, stop > 0.0 ? stop : 30.0), 180.0));
    if (edge > 0.01) {
      ASSERT_EQ(side, expected) << "hour angle " << hourAngle << ", from " << angleBefore
                                << ", past " << past << ", stop " << stop;
    }
    stayed += expected != (hourAngle <= 0.0 ? PierSide::kWest : PierSide::kEast) ? 1 : 0;
  }
  EXPECT_GT(stayed, 100);
}

}  // namespace
