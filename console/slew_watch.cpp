// SPDX-License-Identifier: MIT
#include "console/slew_watch.h"

#include <cmath>

#include "console/mount_motion.h"
#include "console/sky_distance.h"

namespace velquinctl {
namespace {

// Far above what the sky does to a mount at rest while it is watched.
constexpr double kMovedDegrees = kSlewDegreesPerSecond * 1.5;
// Home is the pole; an alignment or a polar axis that is off may show it some degrees away.
constexpr double kHomeDeclination = 80.0;

}  // namespace

void SlewWatch::NoteTravel(const SkyPosition& position) {
  if (AxisDistanceDegrees(start_, position) > kMovedDegrees) moved_ = true;
}

void SlewWatch::Add(double seconds, const SkyPosition& position) {
  motion_.Add(seconds, position);
  if (motion_.SpreadDegrees() > kMovedDegrees) moved_ = true;
  NoteTravel(position);
  last_ = position;
  travelDegrees_ = SkyDistanceDegrees(start_, position);
}

bool SlewWatch::RestsAsAtHome() const {
  return motion_.Standing() && std::fabs(last_.decDegrees) >= kHomeDeclination;
}

}  // namespace velquinctl
