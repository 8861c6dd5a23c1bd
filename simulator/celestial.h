// SPDX-License-Identifier: MIT
// The spherical astronomy the simulated controller needs. Pure functions; any thread.
#pragma once

namespace simulator {

/// A place on the celestial sphere in the equator and equinox the controller itself works in.
struct SkyPosition {
  double raHours;     ///< 0 to 24, increasing eastward
  double decDegrees;  ///< -90 to +90, positive north
};

/// Degrees that the sky turns in one second of time; one unit of a hand move's rate.
inline constexpr double kSiderealDegreesPerSecond = 360.98564736629 / 86400.0;

/// @return the angle brought into 0 (included) to 360 (excluded) degrees.
double WrapDegrees(double degrees);

/// @param utcSeconds time since 1858-11-17 00:00 UTC (Modified Julian Date 0), seconds
/// @param longitudeDegrees east positive
/// @return mean sidereal time of the place, 0 to 360 degrees.
double SiderealDegrees(double utcSeconds, double longitudeDegrees);

/// @param hourAngleDegrees positive west of the meridian
/// @return height above the horizon without refraction, -90 to +90 degrees.
double AltitudeDegrees(double latitudeDegrees, double hourAngleDegrees, double decDegrees);

}  // namespace simulator
