// SPDX-License-Identifier: MIT
#include "console/mount_motion.h"

#include <cmath>

#include "console/angle_text.h"
#include "console/sky_distance.h"
#include "console/sky_drift.h"

namespace velquinctl {
namespace {

// Ten times the step in which positions come, and far less than a guide pulse moves a mount.
constexpr double kStillDegrees = 1e-4;

std::string Signed(double degrees) {
  return (degrees < 0.0 ? "-" : "+") + FormatDistance(std::fabs(degrees));
}

}  // namespace

double RaMovedDegrees(const SkyPosition& from, const SkyPosition& to) {
  return std::remainder(to.raDegrees - from.raDegrees, 360.0);
}

double SpeedBetween(const SkyPosition& from, const SkyPosition& to, double seconds) {
  return AxisDistanceDegrees(from, to) / seconds;
}

MountMotion MotionBetween(const SkyPosition& from, const SkyPosition& to, double seconds) {
  if (AxisDistanceDegrees(from, to) <= kStillDegrees) return MountMotion::kTracking;
  if (IsSkyDrift(from, to, seconds)) return MountMotion::kStanding;
  return SpeedBetween(from, to, seconds) < kSlewDegreesPerSecond ? MountMotion::kMoving
                                                                 : MountMotion::kSlewing;
}

const char* MotionWord(MountMotion motion) {
  switch (motion) {
    case MountMotion::kTracking:
      return "tracking";
    case MountMotion::kStanding:
      return "not tracking";
    case MountMotion::kMoving:
      return "moving";
    case MountMotion::kSlewing:
      return "slewing";
  }
  return "";
}

std::string MovedText(const SkyPosition& from, const SkyPosition& to) {
  return "right ascension " + Signed(RaMovedDegrees(from, to)) + ", declination " +
         Signed(to.decDegrees - from.decDegrees);
}

}  // namespace velquinctl
