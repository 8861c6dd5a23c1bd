// SPDX-License-Identifier: MIT
#include "simulator/slew_axis.h"

#include <algorithm>
#include <cmath>

namespace simulator {

bool SlewAxis::StepTowards(double targetDegrees, double stepSeconds, const SlewLimits& limits) {
  const double way = targetDegrees - degrees;
  const double distance = std::fabs(way);
  const double towards = way < 0.0 ? -1.0 : 1.0;
  const double gain = limits.acceleration * stepSeconds;

  // The speed from which a loss of `gain` per step brings the axis to rest exactly at the target.
  const double brakingRate =
      2.0 * limits.acceleration * distance /
      (std::sqrt(gain * gain / 4.0 + 2.0 * limits.acceleration * distance) + gain / 2.0);
  const double allowed = std::min(limits.topRate, brakingRate);
  const double rate = std::min(slewRate * towards + gain, allowed);

  if (rate >= 0.0 && rate * stepSeconds >= distance) {
    degrees = targetDegrees;
    slewRate = 0.0;
    return true;
  }
  slewRate = rate * towards;
  degrees += slewRate * stepSeconds;
  return false;
}

double SlewAxis::BrakingPoint(const SlewLimits& limits) const {
  return degrees + slewRate * std::fabs(slewRate) / (2.0 * limits.acceleration);
}

}  // namespace simulator
