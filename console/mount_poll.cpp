// SPDX-License-Identifier: MIT
// Waiting for the mount, and telling what it does.
#include "console/mount_poll.h"

#include "console/angle_text.h"
#include "console/driver_messages.h"
#include "console/failure.h"
#include "console/steady_time.h"

namespace velquinctl {
namespace {

constexpr int kPollMs = 100;

}  // namespace

void PollMount(const CommandContext& context, const Session& session, const MountPoll& poll) {
  const double begin = SteadySeconds();
  for (;;) {
    context.interrupt.SleepMs(kPollMs);
    if (context.messages.HasText()) {
      if (poll.motion != nullptr) poll.motion->Settle();
      throw Failure(ExitCode::kMountFailed, poll.whenRefused ? poll.whenRefused()
                                                             : "the mount refused the command" +
                                                                   DriverSays(context.messages));
    }
    const MountState state = session.Read();
    if (!state.valid) {
      throw Failure(ExitCode::kMountFailed, context.request.address + " stopped responding");
    }
    const double seconds = SteadySeconds() - begin;
    if (poll.step(seconds, state)) return;
    if (poll.limit.Over()) throw Failure(ExitCode::kMountFailed, poll.whenLate());
  }
}

std::string PositionText(const SkyPosition& position) {
  return FormatRightAscension(position.raDegrees) + ' ' + FormatDeclination(position.decDegrees);
}

std::string ReadyText(const MountState& state) {
  return state.ready ? "ready" : "not ready (parked)";
}

JsonObject PositionObject(const SkyPosition& position) {
  JsonObject object;
  object.Add("raDegrees", position.raDegrees)
      .Add("decDegrees", position.decDegrees)
      .Add("raText", FormatRightAscension(position.raDegrees))
      .Add("decText", FormatDeclination(position.decDegrees));
  return object;
}

JsonObject StateObject(const MountState& state) {
  JsonObject object;
  object.Add("valid", state.valid);
  if (state.valid) {
    object.Append(PositionObject(state.position)).Add("ready", state.ready);
  } else {
    object.AddNull("raDegrees").AddNull("decDegrees").AddNull("ready");
  }
  if (state.pierSide < 0) return object.AddNull("pierSide");
  return object.Add("pierSide", state.pierSide);
}

}  // namespace velquinctl
