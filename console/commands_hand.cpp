// SPDX-License-Identifier: MIT
// The commands that move by hand or by guide pulse: slew, pulse, guide-speed.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "console/angle_text.h"
#include "console/commands.h"
#include "console/failure.h"
#include "console/fresh_look.h"
#include "console/hand_move.h"
#include "console/motion_watch.h"
#include "console/mount_motion.h"
#include "console/mount_poll.h"
#include "console/mount_stop.h"
#include "console/sky_distance.h"
#include "console/steady_time.h"

namespace velquinctl {
namespace {

constexpr int kRenewMs = 100;          // each move lasts one second at the most unless renewed
constexpr double kRestSeconds = 0.8;   // longer than until a slow link has brought another reading
constexpr double kHandSeconds = 10.0;  // beside the time of the moves themselves

std::string NumberText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

/// @return the limit of a command that lasts some seconds by itself.
TimeLimit LimitBeside(const CommandContext& context, double moveSeconds) {
  return context.Limit(moveSeconds + kHandSeconds);
}

/// Where a move begins.
struct MoveStart {
  bool tracks = false;
  double seconds = 0.0;  // of the position
  SkyPosition position;
};

/// Makes sure that what is seen afterwards is the move, and not what the mount did anyway. A new
/// session is left. @throws Failure for a mount that moves already
MoveStart ExpectRest(const CommandContext& context, const TimeLimit& limit) {
  context.Connect();
  const MomentView view = WatchForAMoment(context, limit);
  if (!view.look.holds) {
    throw Failure(ExitCode::kMountFailed, context.request.address +
                                              " stopped responding: whether the mount moves is not "
                                              "known; nothing was sent");
  }
  if (view.Moves()) {
    throw Failure(ExitCode::kMountFailed,
                  std::string("the mount is ") + MotionWord(view.motion) + " already, at " +
                      PositionText(view.look.state->position) +
                      "; nothing was sent. If it should not move, run \"velquinctl stop\"");
  }
  const Session& session = context.Connect();
  return {view.motion == MountMotion::kTracking, SteadySeconds(), session.Read().position};
}

/// Where a move ends.
struct MoveEnd {
  MountState state;
  bool tracks = false;
};

/// Waits until a new session shows the mount at rest.
MoveEnd WaitForRest(const CommandContext& context, const TimeLimit& limit) {
  bool tracks = false;
  const auto makeStep = [&]() -> LookStep {
    return
        [&, motion = MotionWatch(kRestSeconds)](double seconds, const MountState& state) mutable {
          motion.Add(seconds, state.position);
          tracks = !motion.Standing();
          return motion.AtRest();
        };
  };
  const FreshLook look = WatchAnew(context, limit, makeStep);
  if (look.holds) return {*look.state, tracks};
  throw Failure(ExitCode::kMountFailed,
                "the controller acknowledged the move, but no reading after it shows the mount at "
                "rest; " +
                    std::string(kMayStillMove));
}

/// @return the result keys of a move.
JsonObject MovedObject(const SkyPosition& start, const MountState& end) {
  JsonObject object = StateObject(end);
  object.Add("movedDegrees", SkyDistanceDegrees(start, end.position))
      .Add("raMovedDegrees", RaMovedDegrees(start, end.position))
      .Add("decMovedDegrees", end.position.decDegrees - start.decDegrees);
  return object;
}

/// @return what the move did, for people: how far, where to, and what the coordinates did.
std::string MovedLine(const std::string& direction, const SkyPosition& start,
                      const SkyPosition& end) {
  return "moved " + FormatDistance(SkyDistanceDegrees(start, end)) + direction + ", to " +
         PositionText(end) + " (" + MovedText(start, end) + ')';
}

/// @throws Failure when the coordinates do not show the move that was asked for
void ExpectMotion(const MoveStart& start, const MoveEnd& end, HandMoveWay way) {
  const MountState& state = end.state;
  const std::string notReady = state.ready ? "" : ": it is " + ReadyText(state);
  switch (JudgeHandMove(start.position, state.position, SteadySeconds() - start.seconds, way,
                        start.tracks && end.tracks)) {
    case HandMoveVerdict::kMoved:
      return;
    case HandMoveVerdict::kUnmoved:
      throw Failure(ExitCode::kMountFailed, "the mount did not move" + notReady);
    case HandMoveVerdict::kSkyDrift:
      throw Failure(ExitCode::kMountFailed,
                    state.ready
                        ? "the mount was not seen to move: it does not track, and the sky's "
                          "turning explains what its coordinates did (" +
                              MovedText(start.position, state.position) + ')'
                        : "the mount did not move" + notReady);
    case HandMoveVerdict::kOther:
      throw Failure(ExitCode::kMountFailed, "the mount was not seen to move as it was asked to: " +
                                                MovedText(start.position, state.position));
  }
}

/// Holds the button: renews the move until its time is over.
void HoldSlew(const CommandContext& context, const Session& session, const SlewAction& action,
              const TimeLimit& limit) {
  ProgressLine line(context.output.Progress(), context.output.ProgressWriter());
  const double begin = SteadySeconds();
  for (bool last = false; !last;) {
    if (limit.Over())
      throw Failure(ExitCode::kMountFailed, "the time limit ended before the move did");
    session.Exports().Slew(nullptr, action.direction, 1, action.speed);
    const double seconds = SteadySeconds() - begin;
    line.Show(seconds,
              "moving " + action.directionName + "  " + PositionText(session.Read().position));
    const double leftMs = std::max((action.forSeconds - seconds) * 1000.0, 0.0);
    last = leftMs <= kRenewMs;
    context.interrupt.SleepMs(last ? static_cast<int>(leftMs) : kRenewMs);
  }
}

HandMoveWay AskedWay(const SlewAction& action) {
  const double north =
      (action.direction == TELESCOPE_NORTH) - (action.direction == TELESCOPE_SOUTH);
  const double east = (action.direction == TELESCOPE_EAST) - (action.direction == TELESCOPE_WEST);
  return WayOf(north, east, true);
}

HandMoveWay AskedWay(const PulseAction& action) {
  const auto& ms = action.lengthsMs;
  return WayOf((ms[0] - ms[1]) * action.rateDec, (ms[2] - ms[3]) * action.rateRa, false);
}

/// Waits until the pulses are over. Ctrl-C does not end them: the driver finishes what it began.
void SleepThroughPulses(const CommandContext& context, const PulseAction& action) {
  try {
    // The driver reads no status until the last pulse is over.
    context.interrupt.SleepMs(static_cast<int>(action.DriverSeconds() * 1000.0));
  } catch (const Failure& failure) {
    const bool finished = context.sessions.End(EndProbe::kAsk).Acknowledged(MountCommand::kPulse);
    throw Failure(
        failure.Code(),
        failure.what() +
            (finished ? std::string("; the driver finished its pulses")
                      : std::string("; not every pulse was acknowledged, and ") + kMayStillMove));
  }
}

}  // namespace

void PerformSlew(const CommandContext& context, const SlewAction& action) {
  const TimeLimit limit = LimitBeside(context, action.forSeconds);
  const MoveStart start = ExpectRest(context, limit);
  const Session& session = *context.sessions.Current();
  WithStopWhenBrokenOff(context, [&](Motion& motion) {
    motion.Begin();
    HoldSlew(context, session, action, limit);
    session.Exports().Slew(nullptr, action.direction, 0, action.speed);
    // The release itself sends nothing; a move without direction ends the last one at once.
    session.Exports().Slew(nullptr, 0, 1, action.speed);
    if (!context.sessions.End(EndProbe::kAsk).Acknowledged(MountCommand::kHandMove)) {
      throw Failure(ExitCode::kMountFailed,
                    "the controller did not acknowledge every part of the move");
    }
    motion.Settle();
  });
  const MoveEnd end = WaitForRest(context, limit);
  ExpectMotion(start, end, AskedWay(action));
  context.output.Done(MovedLine(' ' + action.directionName, start.position, end.state.position),
                      JsonObject()
                          .Add("direction", action.directionName)
                          .Add("speed", action.speed)
                          .Append(MovedObject(start.position, end.state)));
}

void PerformPulse(const CommandContext& context, const PulseAction& action) {
  const TimeLimit limit = LimitBeside(context, action.DriverSeconds());
  const MoveStart start = ExpectRest(context, limit);
  const Session& session = *context.sessions.Current();
  if (limit.LeftSeconds() < action.DriverSeconds())
    throw Failure(ExitCode::kMountFailed, "no time left for the pulses: none was sent");
  const auto& ms = action.lengthsMs;
  Motion motion;
  motion.Begin();
  session.Exports().SlewPulseDuration(nullptr, ms[0], ms[1], ms[2], ms[3], action.rateRa,
                                      action.rateDec);
  SleepThroughPulses(context, action);
  const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
  motion.Settle();
  ExpectAcknowledged(context, outcome, MountCommand::kPulse, "every pulse", limit);
  const MoveEnd end = WaitForRest(context, limit);
  if (Moves(AskedWay(action))) ExpectMotion(start, end, AskedWay(action));
  context.output.Done("pulses acknowledged: " + MovedLine("", start.position, end.state.position),
                      JsonObject()
                          .Add("northMs", ms[0])
                          .Add("southMs", ms[1])
                          .Add("eastMs", ms[2])
                          .Add("westMs", ms[3])
                          .Add("rateRa", action.rateRa)
                          .Add("rateDec", action.rateDec)
                          .Append(MovedObject(start.position, end.state)));
}

void PerformGuideSpeed(const CommandContext& context, const GuideSpeedAction& action) {
  context.Connect().Exports().SetGuideSpeed(nullptr, action.rateRa, action.rateDec);
  const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
  ExpectAcknowledged(context, outcome, MountCommand::kGuideSpeed, "the guide speeds",
                     context.Limit(kHandSeconds));
  context.output.Done("guide speeds acknowledged: " + NumberText(action.rateRa) + " and " +
                          NumberText(action.rateDec) + kAcceptanceUntold,
                      JsonObject().Add("rateRa", action.rateRa).Add("rateDec", action.rateDec));
}

}  // namespace velquinctl
