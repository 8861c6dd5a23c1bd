// SPDX-License-Identifier: MIT
// Stopping the mount for certain: the stop command's own, and that of every command that set the
// mount in motion and is broken off. One thread.
#pragma once

#include <functional>

#include "console/commands.h"
#include "console/stop_attempts.h"

namespace velquinctl {

/// How long a stop is tried, unless the user says otherwise.
inline constexpr double kStopSeconds = 30.0;

/// Asks the mount to stop: in the session that runs, if there is one, then in new ones, until the
/// controller has acknowledged it. No session is left.
/// @param interruptible whether Ctrl-C ends it (by a Failure); a second one ends the program anyway
StopReport StopMount(const CommandContext& context, const TimeLimit& limit, bool interruptible);

/// Whether a command's motion has to be stopped when the command is broken off.
class Motion {
 public:
  Motion() = default;
  Motion(const Motion&) = delete;
  Motion& operator=(const Motion&) = delete;
  ~Motion() { Settle(); }

  /// From here on the mount may be moving. Called before the command is queued.
  void Begin() { Set(true); }
  /// The mount rests, or goes on as before the command.
  void Settle() { Set(false); }
  bool UnderWay() const { return underWay_; }

 private:
  void Set(bool underWay) {
    underWay_ = underWay;
    Interrupt::SetMountMayMove(underWay);
  }

  bool underWay_ = false;
};

/// Runs what sets the mount in motion. When it fails with the motion under way, stops the mount and
/// adds to the failure what came of that: kStopSeconds are tried, or --timeout when that is
/// shorter.
void WithStopWhenBrokenOff(const CommandContext& context,
                           const std::function<void(Motion& motion)>& body);

}  // namespace velquinctl
