// SPDX-License-Identifier: MIT
#include "simulator/celestial.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace simulator {

namespace {

constexpr double kJ2000Seconds = 51544.5 * 86400.0;  // 2000-01-01 12:00 as seconds since MJD 0
constexpr double kGreenwichAtJ2000Degrees = 18.697374558 * 15.0;

double Radians(double degrees) {
  return degrees * std::numbers::pi / 180.0;
}

}  // namespace

double WrapDegrees(double degrees) {
  const double rest = std::fmod(degrees, 360.0);
  const double wrapped = rest < 0.0 ? rest + 360.0 : rest;
  return wrapped < 360.0 ? wrapped : 0.0;  // a tiny negative angle rounds up to 360 itself
}

double SiderealDegrees(double utcSeconds, double longitudeDegrees) {
  const double turned = (utcSeconds - kJ2000Seconds) * kSiderealDegreesPerSecond;
  return WrapDegrees(kGreenwichAtJ2000Degrees + turned + longitudeDegrees);
}

double AltitudeDegrees(double latitudeDegrees, double hourAngleDegrees, double decDegrees) {
  const double latitude = Radians(latitudeDegrees);
  const double dec = Radians(decDegrees);
  const double sine = std::sin(latitude) * std::sin(dec) +
                      std::cos(latitude) * std::cos(dec) * std::cos(Radians(hourAngleDegrees));
  return std::asin(std::clamp(sine, -1.0, 1.0)) * 180.0 / std::numbers::pi;
}

}  // namespace simulator
