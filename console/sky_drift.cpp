// SPDX-License-Identifier: MIT
#include "console/sky_drift.h"

#include <cmath>

namespace velquinctl {
namespace {

constexpr double kStepDegrees = 2e-5;  // the controller tells positions in steps of half of it
constexpr double kOldestSeconds = 0.5;

}  // namespace

bool IsSkyDrift(const SkyPosition& from, const SkyPosition& to, double seconds) {
  const double ra = std::remainder(to.raDegrees - from.raDegrees, 360.0);
  const double most = 2.0 * kSiderealDegreesPerSecond * (seconds + kOldestSeconds);
  return std::fabs(to.decDegrees - from.decDegrees) <= kStepDegrees && ra >= -kStepDegrees &&
         ra <= most + kStepDegrees;
}

}  // namespace velquinctl
