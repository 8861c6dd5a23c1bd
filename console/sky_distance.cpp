// SPDX-License-Identifier: MIT
// Great circle distance by the arc tangent form, which loses no digits at either end.
#include "console/sky_distance.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velquinctl {
namespace {

double Radians(double degrees) {
  return degrees * std::numbers::pi / 180.0;
}

}  // namespace

double SkyDistanceDegrees(const SkyPosition& a, const SkyPosition& b) {
  const double difference = Radians(b.raDegrees - a.raDegrees);
  const double sinA = std::sin(Radians(a.decDegrees));
  const double cosA = std::cos(Radians(a.decDegrees));
  const double sinB = std::sin(Radians(b.decDegrees));
  const double cosB = std::cos(Radians(b.decDegrees));
  const double across =
      std::hypot(cosB * std::sin(difference), cosA * sinB - sinA * cosB * std::cos(difference));
  const double along = sinA * sinB + cosA * cosB * std::cos(difference);
  return std::atan2(across, along) * 180.0 / std::numbers::pi;
}

double AxisDistanceDegrees(const SkyPosition& a, const SkyPosition& b) {
  const double ra = std::fabs(std::remainder(b.raDegrees - a.raDegrees, 360.0));
  return std::max(ra, std::fabs(b.decDegrees - a.decDegrees));
}

}  // namespace velquinctl
