// SPDX-License-Identifier: MIT
#include "console/hand_move.h"

#include "console/mount_motion.h"
#include "console/sky_distance.h"
#include "console/sky_drift.h"

namespace velquinctl {
namespace {

// More than the step in which the controller reports positions, and a fourteenth of the smallest
// guide pulse that makes sense (100 ms at half the sidereal rate).
constexpr double kSeenDegrees = 1.5e-5;

int Sign(double value) {
  return value > 0.0 ? 1 : value < 0.0 ? -1 : 0;
}

bool WentWay(const SkyPosition& from, const SkyPosition& to, HandMoveWay way) {
  if (way.ra != 0 && way.ra * RaMovedDegrees(from, to) < kSeenDegrees) return false;
  return way.dec == 0 || way.dec * (to.decDegrees - from.decDegrees) >= kSeenDegrees;
}

}  // namespace

HandMoveVerdict JudgeHandMove(const SkyPosition& from, const SkyPosition& to, double seconds,
                              HandMoveWay way, bool tracks) {
  if (AxisDistanceDegrees(from, to) < kSeenDegrees) return HandMoveVerdict::kUnmoved;
  if (!tracks && IsSkyDrift(from, to, seconds)) return HandMoveVerdict::kSkyDrift;
  if (!WentWay(from, to, way)) return HandMoveVerdict::kOther;
  // The same right ascension with the declination of before: did the sky alone take it there?
  const SkyPosition raAlone{to.raDegrees, from.decDegrees};
  const bool drifted = !tracks && way.ra > 0 && IsSkyDrift(from, raAlone, seconds);
  return drifted ? HandMoveVerdict::kOther : HandMoveVerdict::kMoved;
}

HandMoveWay WayOf(double north, double east, bool eastIncreases) {
  return {.ra = eastIncreases ? Sign(east) : Sign(-east), .dec = Sign(north)};
}

}  // namespace velquinctl
