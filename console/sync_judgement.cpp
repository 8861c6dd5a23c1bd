// SPDX-License-Identifier: MIT
#include "console/sync_judgement.h"

#include "console/sky_distance.h"

namespace velquinctl {
namespace {

constexpr double kToleranceDegrees = 60.0 / 3600.0;
constexpr double kTooNearDegrees = 3.0 / 3600.0;  // guiding and rounding do as much

}  // namespace

SyncVerdict JudgeSync(const SkyPosition& before, const SkyPosition& after,
                      const SkyPosition& target) {
  const double old = SkyDistanceDegrees(before, target);
  const double left = SkyDistanceDegrees(after, target);
  if (left > kToleranceDegrees) return SyncVerdict::kNotSeen;
  if (old < kTooNearDegrees) return SyncVerdict::kCannotBeTold;
  return left <= 0.5 * old ? SyncVerdict::kTaken : SyncVerdict::kNotSeen;
}

}  // namespace velquinctl
