// SPDX-License-Identifier: MIT
// A sliding window over the last positions.
#include "console/motion_watch.h"

#include <algorithm>

#include "console/mount_motion.h"
#include "console/sky_distance.h"
#include "console/sky_drift.h"

namespace velquinctl {

void MotionWatch::Add(double seconds, const SkyPosition& position) {
  samples_.push_back({seconds, position});
  while (samples_.size() > 2 && samples_[1].seconds <= seconds - windowSeconds_)
    samples_.pop_front();
}

bool MotionWatch::Full() const {
  return !samples_.empty() && samples_.back().seconds - samples_.front().seconds >= windowSeconds_;
}

double MotionWatch::SpreadDegrees() const {
  double spread = 0.0;
  for (const Sample& sample : samples_)
    spread = std::max(spread, AxisDistanceDegrees(sample.position, samples_.back().position));
  return spread;
}

bool MotionWatch::AtRest() const {
  if (!Full()) return false;
  const Sample& newest = samples_.back();
  return std::all_of(samples_.begin(), samples_.end(), [&](const Sample& sample) {
    const MountMotion motion =
        MotionBetween(sample.position, newest.position, newest.seconds - sample.seconds);
    return motion == MountMotion::kTracking || motion == MountMotion::kStanding;
  });
}

bool MotionWatch::Standing() const {
  if (!AtRest()) return false;
  const Sample& oldest = samples_.front();
  const Sample& newest = samples_.back();
  return RaMovedDegrees(oldest.position, newest.position) >=
         0.5 * kSiderealDegreesPerSecond * (newest.seconds - oldest.seconds);
}

}  // namespace velquinctl
