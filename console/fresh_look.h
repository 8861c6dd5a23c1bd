// SPDX-License-Identifier: MIT
// Looking at the mount anew. A reading of a running session may be seven seconds old; the first one
// of a new session is newer than the session. One thread.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "console/commands.h"
#include "console/mount_motion.h"

namespace velquinctl {

struct FreshLook {
  bool holds = false;               ///< what was looked for was seen
  std::optional<MountState> state;  ///< the newest reading; empty when there was none
};

/// Gets the seconds since some moment before the first reading, and a reading; true when it is what
/// is looked for.
using LookStep = std::function<bool(double seconds, const MountState& state)>;

/// Opens new sessions until one of them shows what is looked for, or the time is over. A session
/// that runs when this is called is the first of them. No session is left.
/// @param step for a single reading
FreshLook LookAnew(const CommandContext& context, const TimeLimit& limit, const LookStep& step);

/// The same for what a row of readings shows, such as rest. The row is that of one session, if each
/// of its status queries was answered, or that of the first readings of several sessions.
/// @param makeStep makes a step for a row
FreshLook WatchAnew(const CommandContext& context, const TimeLimit& limit,
                    const std::function<LookStep()>& makeStep);

/// A mount watched for a moment.
struct MomentView {
  FreshLook look;  ///< holds when every answer of the moment came; the rest counts only then
  MountMotion motion = MountMotion::kTracking;
  double degreesPerSecond = 0.0;

  /// @return whether it does more than track or stand.
  bool Moves() const { return motion == MountMotion::kMoving || motion == MountMotion::kSlewing; }
};

/// Watches the mount for a moment as WatchAnew does. No session is left.
MomentView WatchForAMoment(const CommandContext& context, const TimeLimit& limit);

/// For a command that is over with its answer.
/// @param what how the message calls the command, for example "the sync"
/// @throws Failure when the controller did not acknowledge it; it tells what the mount reports now
void ExpectAcknowledged(const CommandContext& context, const SessionOutcome& outcome,
                        MountCommand command, const std::string& what, const TimeLimit& limit);

/// What a command that is over with its answer adds to its result.
inline constexpr const char* kAcceptanceUntold =
    "; the driver does not tell whether the controller accepted that";

/// Readings of a mount that does nothing but track, or stand while the sky turns, for
/// `restSeconds`.
LookStep RestStep(double restSeconds);

}  // namespace velquinctl
