// SPDX-License-Identifier: MIT
// A sliding window over the last positions.
#include "console/motion_watch.h"

#include <algorithm>

#include "console/sky_distance.h"

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

}  // namespace velquinctl
