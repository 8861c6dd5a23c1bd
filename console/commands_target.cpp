// SPDX-License-Identifier: MIT
// The commands with a position: goto and sync.
#include <cstdio>

#include "console/angle_text.h"
#include "console/commands.h"
#include "console/driver_messages.h"
#include "console/failure.h"
#include "console/fresh_look.h"
#include "console/goto_watch.h"
#include "console/mount_poll.h"
#include "console/mount_stop.h"
#include "console/progress_bar.h"
#include "console/sky_distance.h"
#include "console/sync_judgement.h"
#include "console/terminal.h"

namespace velquinctl {
namespace {

constexpr double kGotoSeconds = 300.0;
constexpr double kSyncSeconds = 10.0;
constexpr double kFarSyncDegrees = 5.0;  // farther away it is more likely a slip than a correction
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

void TellReached(const Output& output, const GotoAction& action, const MountState& state,
                 double seconds) {
  const double left = SkyDistanceDegrees(state.position, action.target);
  JsonObject details = TargetObject(action.target);
  details.Append(StateObject(state)).Add("distanceDegrees", left).Add("elapsedSeconds", seconds);
  output.Done("reached " + PositionText(state.position) + ", " + FormatDistance(left) +
                  " from the target, in " + SecondsText(seconds),
              details);
}

/// @throws Failure for a goto that will not come to its end.
void JudgeVerdict(const CommandContext& context, GotoWatch::Verdict verdict, const GotoWatch& watch,
                  Motion& motion) {
  if (verdict == GotoWatch::Verdict::kNeverMoved) {
    const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
    if (!outcome.Acknowledged(MountCommand::kGoto) || !outcome.ReadingsComplete())
      throw Failure(ExitCode::kMountFailed,
                    "the mount was not seen to move, and answers of the controller were missing");
    motion.Settle();
    throw Failure(ExitCode::kMountFailed, kNotGone);
  }
  if (verdict == GotoWatch::Verdict::kStoppedShort) {
    throw Failure(ExitCode::kMountFailed,
                  "the mount stopped " + FormatDistance(watch.LeftDegrees()) + " from the target");
  }
}

/// What was seen of a goto.
struct GotoView {
  GotoWatch watch;
  double seconds = 0.0;
  MountState state;
};

/// @return what is to be said of a mount after a refused goto: it goes on as before.
std::string RefusedText(const CommandContext& context) {
  const std::string said = DriverSays(context.messages);
  const std::string text = "the goto was refused: target below the horizon or command refused";
  // Waits for the driver, which may still be at its message: what it tells now may be old.
  context.sessions.Close();
  const MomentView view = WatchForAMoment(context, context.Limit(kGotoSeconds));
  if (view.look.holds && !view.Moves()) return text + said;
  if (!view.look.holds)
    return text + said + "; whether the mount moves is not known: " + kMayStillMove;
  return text + said + "; the mount is " + MotionWord(view.motion) + ": " + kMayStillMove;
}

/// Follows the goto in the session that sent it, to its end.
void FollowGoto(const CommandContext& context, const Session& session, GotoView& view,
                Motion& motion) {
  ProgressLine line(context.output.Progress(), context.output.ProgressWriter());
  const auto step = [&](double seconds, const MountState& state) {
    const auto verdict = view.watch.Add(seconds, state.position);
    line.Show(seconds, WayText(view.watch, seconds, state.position));
    JudgeVerdict(context, verdict, view.watch, motion);
    view.seconds = seconds;
    view.state = state;
    return verdict == GotoWatch::Verdict::kArrived;
  };
  const auto whenLate = [&] {
    return "the mount was still " + FormatDistance(view.watch.LeftDegrees()) +
           " from the target after " + SecondsText(context.TimeoutSeconds(kGotoSeconds));
  };
  PollMount(context, session,
            {.limit = context.Limit(kGotoSeconds),
             .step = step,
             .whenLate = whenLate,
             .whenRefused = [&] { return RefusedText(context); },
             .motion = &motion});
  line.End();
}

/// Looks again, because an answer was missing: what was seen may be old.
/// @throws Failure when no new reading shows the mount at the target
void FollowGotoAnew(const CommandContext& context, const GotoAction& action, GotoView& view) {
  const auto makeStep = [&]() -> LookStep {
    return [watch = GotoWatch(action.target, action.toleranceDegrees)](
               double seconds, const MountState& state) mutable {
      return watch.Add(seconds, state.position) == GotoWatch::Verdict::kArrived;
    };
  };
  const FreshLook look = WatchAnew(context, context.Limit(kGotoSeconds), makeStep);
  if (!look.holds) {
    throw Failure(ExitCode::kMountFailed,
                  context.request.address +
                      " stopped responding, and no reading shows the mount at the target");
  }
  view.state = *look.state;
}

/// Asks before a sync that is likely a slip. @throws Failure when it must not be made
void ExpectSyncIsMeant(const CommandContext& context, const SyncAction& action,
                       const MountState& state) {
  if (!state.ready) {
    throw Failure(ExitCode::kMountFailed, "the mount is " + ReadyText(state) +
                                              " and cannot be synchronised: unpark it first");
  }
  const double offset = SkyDistanceDegrees(state.position, action.target);
  if (offset <= kFarSyncDegrees || action.yes) return;
  const std::string where =
      "the position is " + FormatDistance(offset) + " from where the mount thinks it points";
  if (!Terminal::InputIsTerminal())
    throw Failure(ExitCode::kWrongUsage, where + ": add --yes if that is meant; nothing was sent");
  const bool yes = Terminal::AskYes(where + ". Synchronise?");
  context.interrupt.Check();
  if (!yes) throw Failure(ExitCode::kMountFailed, "not synchronised: nothing was sent");
}

/// @return the mount after the acknowledged sync.
/// @throws Failure unless a new reading shows that the mount took it
MountState ExpectSyncTaken(const CommandContext& context, const SyncAction& action,
                           const SkyPosition& before, const TimeLimit& limit) {
  auto verdict = SyncVerdict::kNotSeen;
  const FreshLook look = LookAnew(context, limit, [&](double, const MountState& state) {
    verdict = JudgeSync(before, state.position, action.target);
    return verdict != SyncVerdict::kNotSeen;
  });
  if (!look.state) {
    throw Failure(ExitCode::kMountFailed,
                  "the controller acknowledged the sync, but reported no position after it");
  }
  if (verdict == SyncVerdict::kTaken) return *look.state;
  if (verdict == SyncVerdict::kCannotBeTold) {
    throw Failure(ExitCode::kMountFailed,
                  "the controller acknowledged the sync, but the mount was only " +
                      FormatDistance(SkyDistanceDegrees(before, action.target)) +
                      " from the position before: whether it took the sync cannot be told");
  }
  const SkyPosition& end = look.state->position;
  throw Failure(ExitCode::kMountFailed,
                "the mount did not accept the sync; it reports " + PositionText(end) + ", " +
                    FormatDistance(SkyDistanceDegrees(end, action.target)) + " away");
}

}  // namespace

void PerformGoto(const CommandContext& context, const GotoAction& action) {
  const Session& session = context.Connect();
  GotoView view{GotoWatch(action.target, action.toleranceDegrees), 0.0, session.Read()};
  view.watch.Add(0.0, view.state.position);
  const double target[2] = {action.target.raDegrees, action.target.decDegrees};
  WithStopWhenBrokenOff(context, [&](Motion& motion) {
    motion.Begin();
    session.Exports().Look(nullptr, target);
    FollowGoto(context, session, view, motion);
    const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
    if (!outcome.ReadingsComplete()) FollowGotoAnew(context, action, view);
    motion.Settle();
    if (!outcome.Acknowledged(MountCommand::kGoto)) {
      throw Failure(ExitCode::kMountFailed,
                    "the controller did not acknowledge the goto, though it may have obeyed it: "
                    "the mount is at " +
                        PositionText(view.state.position));
    }
    TellReached(context.output, action, view.state, view.seconds);
  });
}

void PerformSync(const CommandContext& context, const SyncAction& action) {
  const TimeLimit limit = context.Limit(kSyncSeconds);
  const Session& session = context.Connect();
  const MountState before = session.Read();
  ExpectSyncIsMeant(context, action, before);
  const double target[2] = {action.target.raDegrees, action.target.decDegrees};
  session.Exports().Sync(nullptr, target);
  const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
  ExpectAcknowledged(context, outcome, MountCommand::kSync, "the sync", limit);
  const MountState after = ExpectSyncTaken(context, action, before.position, limit);
  const double offset = SkyDistanceDegrees(before.position, action.target);
  JsonObject details = TargetObject(action.target);
  details.Append(StateObject(after)).Add("correctedDegrees", offset);
  context.output.Done("synchronised: the mount points at " + PositionText(after.position) + ", " +
                          FormatDistance(offset) + " from where it thought it was",
                      details);
}

}  // namespace velquinctl
