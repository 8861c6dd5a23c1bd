// SPDX-License-Identifier: MIT
// Tells from a row of positions whether the mount moves. The driver has no such question, so the
// positions have to answer it. Times are injected; one thread.
#pragma once

#include <deque>

#include "console/sky_position.h"

namespace velquinctl {

class MotionWatch {
 public:
  /// @param windowSeconds how far back SpreadDegrees looks
  explicit MotionWatch(double windowSeconds) : windowSeconds_(windowSeconds) {}

  /// @param seconds time of the position, never going back
  void Add(double seconds, const SkyPosition& position);

  /// Forgets all positions.
  void Clear() { samples_.clear(); }

  /// @return whether the watch reaches back over the whole window yet.
  bool Full() const;

  /// @return the largest distance on an axis between the newest position and one in the window.
  double SpreadDegrees() const;

  /// @return whether the mount did nothing but track, or stand while the sky turned: seen from each
  ///         position of the window. False until the window is full.
  bool AtRest() const;
  /// @return whether it was at rest, and its right ascension grew with the sky, at half the sky's
  ///         rate or more: it does not track.
  bool Standing() const;

 private:
  struct Sample {
    double seconds;
    SkyPosition position;
  };

  double windowSeconds_;
  std::deque<Sample> samples_;  // the window, and the last one before it
};

}  // namespace velquinctl
