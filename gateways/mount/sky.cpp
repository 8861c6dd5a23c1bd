// SPDX-License-Identifier: MIT
#include "gateways/mount/sky.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>

namespace velquin {

namespace {

constexpr double kMjdJ2000 = 51544.5;
constexpr double kDaysPerCentury = 36525.0;
// Terrestrial minus universal time, at present; a minute more or less changes the result by 0.0001
// arcseconds.
constexpr double kDeltaTDays = 69.0 / 86400.0;
constexpr double kArcsecondsPerTurn = 1296000.0;

double Radians(double degrees) {
  return degrees * std::numbers::pi / 180.0;
}

double Degrees(double radians) {
  return radians * 180.0 / std::numbers::pi;
}

/// @return the value reduced to 0 (included) to `period` (excluded).
double Wrap(double value, double period) {
  const double rest = std::fmod(value, period);
  const double wrapped = rest < 0.0 ? rest + period : rest;
  return wrapped < period ? wrapped : 0.0;
}

// The five arguments of the Moon's and the Sun's motion, radians, at centuries after J2000 (Simon
// et al. 1994, as used by IAU 2000B).
struct Arguments {
  double l, lp, f, d, om;
};

Arguments ArgumentsAt(double t) {
  const auto radians = [&](double at, double rate) {
    return std::fmod(at + rate * t, kArcsecondsPerTurn) / 3600.0 * std::numbers::pi / 180.0;
  };
  return {radians(485868.249036, 1717915923.2178), radians(1287104.79305, 129596581.0481),
          radians(335779.526232, 1739527262.8478), radians(1072260.70369, 1602961601.2090),
          radians(450160.398036, -6962890.5431)};
}

// A term of the nutation in longitude: multiples of the arguments; the coefficients of their sine,
// of its change in a century, and of their cosine, in 1e-7 arcseconds.
struct NutationTerm {
  int l, lp, f, d, om;
  double sine, sinePerCentury, cosine;
};

constexpr NutationTerm kNutation[] = {
    {0, 0, 0, 0, 1, -172064161.0, -174666.0, 33386.0},
    {0, 0, 2, -2, 2, -13170906.0, -1675.0, -13696.0},
    {0, 0, 2, 0, 2, -2276413.0, -234.0, 2796.0},
    {0, 0, 0, 0, 2, 2074554.0, 207.0, -698.0},
    {0, 1, 0, 0, 0, 1475877.0, -3633.0, 11817.0},
    {0, 1, 2, -2, 2, -516821.0, 1226.0, -524.0},
    {1, 0, 0, 0, 0, 711159.0, 73.0, -872.0},
    {0, 0, 2, 0, 1, -387298.0, -367.0, 380.0},
    {1, 0, 2, 0, 2, -301461.0, -36.0, 816.0},
    {0, -1, 2, -2, 2, 215829.0, -494.0, 111.0},
    {0, 0, 2, -2, 1, 128227.0, 137.0, 181.0},
    {-1, 0, 2, 0, 2, 123457.0, 11.0, 19.0},
    {-1, 0, 0, 2, 0, 156994.0, 10.0, -168.0},
    {1, 0, 0, 0, 1, 63110.0, 63.0, 27.0},
    {-1, 0, 0, 0, 1, -57976.0, -63.0, -189.0},
    {-1, 0, 2, 2, 2, -59641.0, -11.0, 149.0},
    {1, 0, 2, 0, 1, -51613.0, -42.0, 129.0},
    {-2, 0, 2, 0, 1, 45893.0, 50.0, 31.0},
    {0, 0, 0, 2, 0, 63384.0, 11.0, -150.0},
    {0, 0, 2, 2, 2, -38571.0, -1.0, 158.0},
};

// Apparent minus mean sidereal time, arcseconds.
double EquationOfEquinoxes(double t) {
  const Arguments at = ArgumentsAt(t);
  double longitude = 0.0;
  for (const NutationTerm& term : kNutation) {
    const double angle =
        term.l * at.l + term.lp * at.lp + term.f * at.f + term.d * at.d + term.om * at.om;
    longitude +=
        (term.sine + term.sinePerCentury * t) * std::sin(angle) + term.cosine * std::cos(angle);
  }
  const double obliquity = Radians((84381.406 - 46.836769 * t) / 3600.0);
  // The largest complementary term, IERS Conventions (2010), table 5.2e.
  return longitude * 1e-7 * std::cos(obliquity) + 0.00264096 * std::sin(at.om);
}

}  // namespace

double GreenwichSiderealHours(double mjd) {
  const double days = mjd - kMjdJ2000;
  const double t = (days + kDeltaTDays) / kDaysPerCentury;
  // Whole turns are removed early, to keep digits.
  const double turns = std::fmod(days, 1.0) + 0.7790572732640 + 0.00273781191135448 * days;
  const double precession =
      0.014506 + t * (4612.156534 + t * (1.3915817 + t * (-0.00000044 + t * (-0.000029956))));
  const double arcseconds =
      Wrap(turns, 1.0) * kArcsecondsPerTurn + precession + EquationOfEquinoxes(t);
  return Wrap(arcseconds / 3600.0 / 15.0, 24.0);
}

double LocalSiderealHours(double mjd, double longitudeDegrees) {
  return Wrap(GreenwichSiderealHours(mjd) + longitudeDegrees / 15.0, 24.0);
}

double HourAngleHours(double siderealHours, double raHours) {
  return Wrap(siderealHours - raHours + 12.0, 24.0) - 12.0;
}

Horizontal ToHorizontal(double latitudeDegrees, double hourAngleHours, double decDegrees) {
  const double latitude = Radians(latitudeDegrees);
  const double hourAngle = Radians(hourAngleHours * 15.0);
  const double dec = Radians(decDegrees);
  // Towards the north point, the east point and the zenith.
  const double north =
      std::sin(dec) * std::cos(latitude) - std::cos(dec) * std::cos(hourAngle) * std::sin(latitude);
  const double east = -std::cos(dec) * std::sin(hourAngle);
  const double up =
      std::sin(dec) * std::sin(latitude) + std::cos(dec) * std::cos(hourAngle) * std::cos(latitude);
  return {Degrees(std::atan2(up, std::hypot(north, east))),
          Wrap(Degrees(std::atan2(east, north)), 360.0)};
}

double AirMass(double altitudeDegrees) {
  constexpr double kLowest = -0.5;
  if (!(altitudeDegrees >= kLowest)) return std::numeric_limits<double>::quiet_NaN();
  // The formula is valid down to the horizon.
  const double altitude = std::max(altitudeDegrees, 0.0);
  return 1.0 / std::sin(Radians(altitude + 244.0 / (165.0 + 47.0 * std::pow(altitude, 1.1))));
}

PierSide SideAfterGoto(double hourAngleHours, double axisAngleDegrees,
                       const MeridianSettings& settings) {
  constexpr double kMechanicalOverrunDegrees = 30.0;
  constexpr double kPoleDegrees = 90.0;
  const double stop = settings.stopDegrees > 0.0 ? settings.stopDegrees : kMechanicalOverrunDegrees;
  const double past = std::min(settings.gotoDegrees, stop);
  const double hourAngle = Wrap(hourAngleHours * 15.0 + 180.0, 360.0) - 180.0;
  // Both the upper and the lower meridian bound a side.
  if (axisAngleDegrees < kPoleDegrees && (hourAngle <= past || hourAngle >= 180.0 - past)) {
    return PierSide::kWest;
  }
  if (axisAngleDegrees > kPoleDegrees && (hourAngle >= -past || hourAngle <= past - 180.0)) {
    return PierSide::kEast;
  }
  return hourAngle <= 0.0 ? PierSide::kWest : PierSide::kEast;
}

}  // namespace velquin
