// SPDX-License-Identifier: MIT
// What the commands that wait for the mount have in common.
#pragma once

#include <functional>
#include <string>

#include "console/commands.h"
#include "console/json_object.h"
#include "console/mount_stop.h"
#include "console/session.h"

namespace velquinctl {

/// How a command waits for the mount.
struct MountPoll {
  TimeLimit limit;  ///< after which the command has failed
  /// Gets the seconds since the beginning and the state; returns true when all is done.
  std::function<bool(double seconds, const MountState& state)> step;
  std::function<std::string()> whenLate;  ///< says what was not reached in time
  /// Says it all when the driver shows a message; takes the message. Empty: the message alone.
  std::function<std::string()> whenRefused = {};
  Motion* motion = nullptr;  ///< settled then: a mount that refused goes on as before
};

/// Looks at the mount about ten times a second until all is done.
/// @throws Failure when the time is over, the mount stops responding, the driver shows a message,
/// or
///         on Ctrl-C
void PollMount(const CommandContext& context, const Session& session, const MountPoll& poll);

/// @return a position for people: 05h34m31.90s +22d00m52.0s.
std::string PositionText(const SkyPosition& position);
/// @return "ready" or "not ready (parked)".
std::string ReadyText(const MountState& state);
/// @return the position's keys: degrees and texts.
JsonObject PositionObject(const SkyPosition& position);
/// @return the keys of a whole state; null where it is not known.
JsonObject StateObject(const MountState& state);

}  // namespace velquinctl
