// SPDX-License-Identifier: MIT
// Astronomy for all front ends. Positions refer to the equinox of date, like the mount's. Only
// AirMass takes refraction into account. Universal time stands for both UT1 and UTC: they differ by
// less than a second, which is 15 arcseconds of sidereal time. Pure functions; any thread.
#pragma once

#include "gateways/mount/snapshot.h"

namespace velquin {

/// @param mjd universal time, Modified Julian Date in days
/// @return apparent sidereal time at Greenwich, 0 to 24 hours; within 0.1 arcseconds from 1950 to
///         2100. Earth rotation angle and its polynomial: IERS Conventions (2010), equations 5.15
///         and 5.32; nutation: the largest twenty terms of IAU 2000B (McCarthy and Luzum 2003).
double GreenwichSiderealHours(double mjd);

/// @param longitudeDegrees east positive @return apparent sidereal time of a place, 0 to 24 hours.
double LocalSiderealHours(double mjd, double longitudeDegrees);

/// @return the hour angle: sidereal time minus right ascension, -12 to 12 hours, positive west of
///         the meridian.
double HourAngleHours(double siderealHours, double raHours);

struct Horizontal {
  double altitudeDegrees;  ///< -90 to 90, without refraction
  double azimuthDegrees;   ///< 0 to 360, from north through east
};

/// Converts from the equatorial frame to the horizon's, for the latitude of the site. Formula:
/// Explanatory Supplement to the Astronomical Almanac, third edition (2013), section 7.1; as
/// vectors, so that it is exact at the poles and at the zenith.
Horizontal ToHorizontal(double latitudeDegrees, double hourAngleHours, double decDegrees);

/// @param altitudeDegrees apparent, above -0.5
/// @return the air mass along a line of sight, 1 at the zenith, 38 at the horizon; NaN below that.
///         Formula: Pickering 2002, The Southern Limits of the Ancient Star Catalog.
double AirMass(double altitudeDegrees);

/// Predicts the side on which a goto ends. A mount stays on its side while the target is at most
/// the meridian goto value past the meridian (or the stop value, if that is smaller and not 0).
/// Otherwise it looks east at negative hour angles and west at the others.
/// @param axisAngleDegrees of the status: below 90 the tube looks east now, above 90 it looks west;
///         at 90, the pole, it has no side yet
PierSide SideAfterGoto(double hourAngleHours, double axisAngleDegrees,
                       const MeridianSettings& settings);

}  // namespace velquin
