// SPDX-License-Identifier: MIT
#include "console/mount_stop.h"

#include <windows.h>

#include <algorithm>

#include "console/failure.h"

namespace velquinctl {
namespace {

constexpr int kPauseMs = 100;

}  // namespace

StopReport StopMount(const CommandContext& context, const TimeLimit& limit, bool interruptible) {
  // Nobody waits for a box to be answered while the mount moves.
  context.messages.SetAnswering(true);
  const auto attempt = [&] {
    Session* session = context.sessions.Current();
    if (session == nullptr) session = &context.sessions.Open(SettingsOf(context.request));
    session->Exports().Stop(nullptr);
    // A stop that the system refused to send leaves no trace but the failure to send more.
    const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
    if (!outcome.Evident()) throw Failure(ExitCode::kMountFailed, kNoEvidence);
    return outcome.Acknowledged(MountCommand::kStop);
  };
  const auto pause = [&] {
    if (interruptible) return context.interrupt.SleepMs(kPauseMs);
    Sleep(kPauseMs);
  };
  StopReport report = StopUntilAcknowledged(attempt, limit, pause);
  // Each failed start showed a message; the report covers all of them.
  context.messages.Take();
  context.messages.SetAnswering(!context.request.options.showMessages);
  return report;
}

void WithStopWhenBrokenOff(const CommandContext& context,
                           const std::function<void(Motion& motion)>& body) {
  Motion motion;
  const auto stop = [&] {
    const double seconds = std::min(kStopSeconds, context.TimeoutSeconds(kStopSeconds));
    return StopMount(context, TimeLimit(seconds), false);
  };
  try {
    body(motion);
  } catch (const Failure& failure) {
    if (!motion.UnderWay()) throw;
    throw Failure(failure.Code(), BrokenOffText(failure.what(), stop));
  } catch (const std::exception& error) {
    if (!motion.UnderWay()) throw;
    throw Failure(ExitCode::kMountFailed,
                  BrokenOffText(std::string("unexpected error: ") + error.what(), stop));
  }
}

}  // namespace velquinctl
