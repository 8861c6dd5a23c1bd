// SPDX-License-Identifier: MIT
// ArrivalJudge: decides from statuses whether a goto, home, park or unpark has reached its goal.
// Pass it only statuses whose exchange began after the command was acknowledged. Pure; not locked:
// only the worker uses it.
//
// "Not slewing" alone proves nothing: a controller may take a moment to begin. So a mount that was
// never seen to slew has arrived when two statuses 0.2 s apart show it at its goal. It has stopped
// elsewhere when it is still away from its goal after a second. Every verdict takes two statuses in
// a row, so that one corrupted status does not end a slew.
#pragma once

#include <chrono>
#include <optional>

#include "core/protocol/mount_status.h"
#include "gateways/mount/snapshot.h"

namespace velquin {

/// @return the angle between two points on the sky, 0 to 180 degrees. Formula: haversine.
double SeparationDegrees(const SkyPoint& one, const SkyPoint& other);

/// State codes of the status.
inline constexpr int kStateAtRest = 0;
inline constexpr int kStateTracking = 1;
inline constexpr int kStateSlewing = 2;
inline constexpr int kStateParked = 3;

/// @return the position of a status.
SkyPoint PositionOf(const MountStatus& status);

class ArrivalJudge {
 public:
  enum class Goal {
    kSky,    ///< at rest or tracking at a position
    kTrack,  ///< tracking at a position, no longer parked
    kHome,   ///< at rest with the declination circle at 90 degrees
    kPark,   ///< parked
  };
  enum class Verdict { kUnderWay, kArrived, kElsewhere };

  /// @param target of kSky and kTrack
  /// @param toleranceDegrees largest distance from the goal that counts as arrived
  /// @param acknowledgedAt when the command's exchange ended
  ArrivalJudge(Goal goal, const SkyPoint& target, double toleranceDegrees,
               MonotonicTime acknowledgedAt)
      : goal_(goal),
        target_(target),
        toleranceDegrees_(toleranceDegrees),
        acknowledgedAt_(acknowledgedAt) {}

  Goal WhichGoal() const { return goal_; }
  /// @param readAt when the status arrived
  Verdict Look(const MountStatus& status, MonotonicTime readAt);
  /// @return true if the last status showed the end of a slew, and the next one has to confirm it.
  bool WantsAnother() const { return sawSlewing_ && statusesAtGoal_ == 1; }

 private:
  bool IsAtGoal(const MountStatus& status) const;

  Goal goal_;
  SkyPoint target_;
  double toleranceDegrees_;
  MonotonicTime acknowledgedAt_;
  bool sawSlewing_ = false;
  std::optional<MonotonicTime> atGoalSince_;
  int statusesAtGoal_ = 0;
  int statusesElsewhere_ = 0;
};

}  // namespace velquin
