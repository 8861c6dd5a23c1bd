// SPDX-License-Identifier: MIT
// The judgement of a goto.
#include "console/goto_watch.h"

#include <algorithm>

#include "console/sky_distance.h"

namespace velquinctl {
namespace {

// Eight polls or so: a slew that only passes the target has left it again by then.
constexpr double kRestSeconds = 0.8;
// A dead link takes up to 7.1 s to show (11 polls of 0.6 s after the unanswered goto); only after
// that does a standing mount mean that it does not want to move.
constexpr double kStallSeconds = 8.0;
// Above what the sky does in that time to a mount that does not track (0.034 degrees).
constexpr double kStandingDegrees = 0.05;
// Above what guiding does to a mount at the target, and below the slowest move by hand.
constexpr double kRestDegrees = 0.02;

}  // namespace

GotoWatch::GotoWatch(const SkyPosition& target, double toleranceDegrees)
    : target_(target),
      toleranceDegrees_(toleranceDegrees),
      rest_(kRestSeconds),
      stall_(kStallSeconds) {}

GotoWatch::Verdict GotoWatch::Add(double seconds, const SkyPosition& position) {
  stall_.Add(seconds, position);
  rest_.Add(seconds, position);
  leftDegrees_ = SkyDistanceDegrees(position, target_);
  if (!begun_) {
    begun_ = true;
    start_ = position;
    wayDegrees_ = leftDegrees_;
  }
  if (leftDegrees_ > toleranceDegrees_) {
    thereSince_ = -1.0;
  } else if (thereSince_ < 0.0) {
    thereSince_ = seconds;
  }
  const bool there = thereSince_ >= 0.0 && seconds - thereSince_ >= kRestSeconds;
  if (there && rest_.Full() && rest_.SpreadDegrees() <= kRestDegrees) return Verdict::kArrived;
  if (!stall_.Full() || stall_.SpreadDegrees() > kStandingDegrees) return Verdict::kOnTheWay;
  const bool moved = AxisDistanceDegrees(start_, position) > 2 * kStandingDegrees;
  return moved ? Verdict::kStoppedShort : Verdict::kNeverMoved;
}

double GotoWatch::Fraction() const {
  if (leftDegrees_ <= toleranceDegrees_) return 1.0;
  return std::clamp(1.0 - leftDegrees_ / wayDegrees_, 0.0, 1.0);
}

}  // namespace velquinctl
