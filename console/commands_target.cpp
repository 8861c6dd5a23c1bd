// SPDX-License-Identifier: MIT
// The commands with a position: goto and sync.
#include <cstdio>

#include "console/angle_text.h"
#include "console/commands.h"
#include "console/driver_messages.h"
#include "console/failure.h"
#include "console/goto_watch.h"
#include "console/mount_poll.h"
#include "console/progress_bar.h"
#include "console/sky_distance.h"

namespace velquinctl {
namespace {

constexpr double kGotoSeconds = 300.0;
constexpr double kSyncSeconds = 10.0;
constexpr double kSyncSettleSeconds = 0.5;  // a small correction shows only in the next polls
constexpr double kSyncToleranceDegrees = 60.0 / 3600.0;
constexpr int kBarWidth = 20;
constexpr const char* kNotGone =
    "the mount did not move: target below the horizon or command refused";

std::string SecondsText(double seconds) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f s", seconds);
  return text;
}

std::string WayText(const GotoWatch& watch, double seconds, const SkyPosition& position) {
  return ProgressBar(watch.Fraction(), kBarWidth) + "  " + FormatDistance(watch.LeftDegrees()) +
         " left  " + PositionText(position) + "  " + SecondsText(seconds);
}

JsonObject TargetObject(const SkyPosition& target) {
  return JsonObject()
      .Add("targetRaDegrees", target.raDegrees)
      .Add("targetDecDegrees", target.decDegrees);
}

void TellReached(const Output& output, const GotoAction& action, const GotoWatch& watch,
                 const MountState& state, double seconds) {
  JsonObject details = TargetObject(action.target);
  details.Append(StateObject(state))
      .Add("distanceDegrees", watch.LeftDegrees())
      .Add("elapsedSeconds", seconds);
  output.Done("reached " + PositionText(state.position) + ", " +
                  FormatDistance(watch.LeftDegrees()) + " from the target, in " +
                  SecondsText(seconds),
              details);
}

/// @throws Failure for a goto that will not come to its end.
void JudgeVerdict(GotoWatch::Verdict verdict, const GotoWatch& watch, StopGuard& stop) {
  if (verdict == GotoWatch::Verdict::kNeverMoved) {
    stop.Disarm();
    throw Failure(ExitCode::kMountFailed, kNotGone);
  }
  if (verdict == GotoWatch::Verdict::kStoppedShort) {
    throw Failure(
        ExitCode::kMountFailed,
        "the mount stands still " + FormatDistance(watch.LeftDegrees()) + " from the target");
  }
}

}  // namespace

void PerformGoto(const CommandContext& context, const GotoAction& action) {
  const Session& session = context.Connect();
  GotoWatch watch(action.target, action.toleranceDegrees);
  watch.Add(0.0, session.Read().position);
  ProgressLine line(context.output.Progress(), context.output.ProgressWriter());
  StopGuard stop(session);
  const double target[2] = {action.target.raDegrees, action.target.decDegrees};
  session.Exports().Look(nullptr, target);
  double elapsedSeconds = 0.0;
  MountState end;
  const auto step = [&](double seconds, const MountState& state) {
    const auto verdict = watch.Add(seconds, state.position);
    line.Show(seconds, WayText(watch, seconds, state.position));
    JudgeVerdict(verdict, watch, stop);
    elapsedSeconds = seconds;
    end = state;
    return verdict == GotoWatch::Verdict::kArrived;
  };
  const auto whenLate = [&] {
    return "the mount was still " + FormatDistance(watch.LeftDegrees()) +
           " from the target after " + SecondsText(context.TimeoutSeconds(kGotoSeconds)) +
           " and is being stopped";
  };
  PollMount(context, session,
            {.timeoutSeconds = context.TimeoutSeconds(kGotoSeconds),
             .step = step,
             .whenLate = whenLate,
             .whenRefused = kNotGone,
             .stop = &stop});
  stop.Disarm();
  line.End();
  TellReached(context.output, action, watch, end, elapsedSeconds);
}

void PerformSync(const CommandContext& context, const SyncAction& action) {
  const Session& session = context.Connect();
  const double target[2] = {action.target.raDegrees, action.target.decDegrees};
  const double offset = SkyDistanceDegrees(session.Read().position, action.target);
  session.Exports().Sync(nullptr, target);
  MountState end;
  const auto step = [&](double seconds, const MountState& state) {
    end = state;
    return seconds >= kSyncSettleSeconds &&
           SkyDistanceDegrees(state.position, action.target) <= kSyncToleranceDegrees;
  };
  const auto whenLate = [&] {
    return "the mount did not take the position over; it reports " + PositionText(end.position) +
           ", " + FormatDistance(SkyDistanceDegrees(end.position, action.target)) + " away";
  };
  PollMount(
      context, session,
      {.timeoutSeconds = context.TimeoutSeconds(kSyncSeconds), .step = step, .whenLate = whenLate});
  JsonObject details = TargetObject(action.target);
  details.Append(StateObject(end)).Add("correctedDegrees", offset);
  context.output.Done("synchronised: the mount points at " + PositionText(end.position) + ", " +
                          FormatDistance(offset) + " from where it believed to be",
                      details);
}

}  // namespace velquinctl
