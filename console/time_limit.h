// SPDX-License-Identifier: MIT
// The moment at which a command has to be over. A plain value; any thread.
#pragma once

#include <algorithm>

#include "console/steady_time.h"

namespace velquinctl {

class TimeLimit {
 public:
  /// @param seconds from `begin` on, 0 or more
  /// @param begin in SteadySeconds
  explicit TimeLimit(double seconds, double begin = SteadySeconds()) : end_(begin + seconds) {}

  /// @return seconds, never negative.
  double LeftSeconds() const { return std::max(0.0, end_ - SteadySeconds()); }
  bool Over() const { return SteadySeconds() >= end_; }

 private:
  double end_;  // in SteadySeconds
};

}  // namespace velquinctl
