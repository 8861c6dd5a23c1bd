// SPDX-License-Identifier: MIT
// Judges a goto by the positions that follow it: still on the way, arrived, or given up. The driver
// itself never says. Times are injected; one thread.
#pragma once

#include "console/motion_watch.h"
#include "console/sky_position.h"

namespace velquinctl {

class GotoWatch {
 public:
  enum class Verdict {
    kOnTheWay,
    kArrived,       ///< within the tolerance and resting there
    kNeverMoved,    ///< stood still since the beginning
    kStoppedShort,  ///< moved, and stands still elsewhere
  };

  /// @param toleranceDegrees how near counts as there, above 0
  GotoWatch(const SkyPosition& target, double toleranceDegrees);

  /// @param seconds time since the goto was sent
  Verdict Add(double seconds, const SkyPosition& position);

  /// @return degrees from the target, as of the last Add.
  double LeftDegrees() const { return leftDegrees_; }
  /// @return how much of the way is done, 0 to 1.
  double Fraction() const;

 private:
  const SkyPosition target_;
  const double toleranceDegrees_;
  MotionWatch rest_;
  MotionWatch stall_;
  bool begun_ = false;
  SkyPosition start_;
  double wayDegrees_ = 0.0;
  double leftDegrees_ = 0.0;
  double thereSince_ = -1.0;  // seconds; negative while away
};

}  // namespace velquinctl
