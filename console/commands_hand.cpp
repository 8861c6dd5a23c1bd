// SPDX-License-Identifier: MIT
// The commands that move by hand or by guide pulse: slew, pulse, guide-speed.
#include <algorithm>
#include <cmath>
#include <cstdio>

#include "console/angle_text.h"
#include "console/commands.h"
#include "console/failure.h"
#include "console/fresh_look.h"
#include "console/mount_motion.h"
#include "console/mount_poll.h"
#include "console/mount_stop.h"
#include "console/sky_distance.h"
#include "console/sky_drift.h"
#include "console/steady_time.h"

namespace velquinctl {
namespace {

constexpr int kRenewMs = 100;          // each move lasts one second at the most unless renewed
constexpr double kRestSeconds = 0.8;   // longer than until a slow link has brought another reading
constexpr double kHandSeconds = 10.0;  // beside the time of the moves themselves
constexpr double kNoMotionDegrees = 1e-5;  // the controller reports positions in steps of this size

std::string NumberText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

/// @return the limit of a command that lasts some seconds by itself.
TimeLimit LimitBeside(const CommandContext& context, double moveSeconds) {
  return context.Limit(moveSeconds + kHandSeconds);
}

/// Waits until a new session shows the mount at rest. @return the state then.
MountState WaitForRest(const CommandContext& context, const TimeLimit& limit) {
  const FreshLook look = WatchAnew(context, limit, [] { return RestStep(kRestSeconds); });
  if (look.holds) return *look.state;
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

/// @throws Failure when the mount did not move, or was not ready and only the sky went on.
void ExpectMotion(const SkyPosition& start, const MountState& end, double seconds) {
  if (AxisDistanceDegrees(start, end.position) < kNoMotionDegrees)
    throw Failure(ExitCode::kMountFailed, "the mount did not move");
  if (end.ready || !IsSkyDrift(start, end.position, seconds)) return;
  throw Failure(ExitCode::kMountFailed, "the mount did not move: it is " + ReadyText(end));
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

/// @return whether the pulses of an axis do not cancel each other.
bool PulsesMove(const PulseAction& action) {
  const auto& ms = action.lengthsMs;
  return (ms[0] != ms[1] && action.rateDec != 0.0) || (ms[2] != ms[3] && action.rateRa != 0.0);
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
  const Session& session = context.Connect();
  const double begin = SteadySeconds();
  const SkyPosition start = session.Read().position;
  const TimeLimit limit = LimitBeside(context, action.forSeconds);
  WithStopWhenBrokenOff(context, [&](Motion& motion) {
    motion.Begin();
    HoldSlew(context, session, action, limit);
    session.Exports().Slew(nullptr, action.direction, 0, action.speed);
    // The release itself sends nothing; a move without direction ends the last one at once.
    session.Exports().Slew(nullptr, 0, 1, action.speed);
    if (!context.sessions.End(EndProbe::kSkip).Acknowledged(MountCommand::kHandMove)) {
      throw Failure(ExitCode::kMountFailed,
                    "the controller did not acknowledge every part of the move");
    }
    motion.Settle();
  });
  const MountState end = WaitForRest(context, limit);
  ExpectMotion(start, end, SteadySeconds() - begin);
  context.output.Done(MovedLine(' ' + action.directionName, start, end.position),
                      JsonObject()
                          .Add("direction", action.directionName)
                          .Add("speed", action.speed)
                          .Append(MovedObject(start, end)));
}

void PerformPulse(const CommandContext& context, const PulseAction& action) {
  const Session& session = context.Connect();
  const double begin = SteadySeconds();
  const SkyPosition start = session.Read().position;
  const TimeLimit limit = LimitBeside(context, action.DriverSeconds());
  if (limit.LeftSeconds() < action.DriverSeconds())
    throw Failure(ExitCode::kMountFailed, "no time left for the pulses: none was sent");
  const auto& ms = action.lengthsMs;
  Motion motion;
  motion.Begin();
  session.Exports().SlewPulseDuration(nullptr, ms[0], ms[1], ms[2], ms[3], action.rateRa,
                                      action.rateDec);
  SleepThroughPulses(context, action);
  const SessionOutcome outcome = context.sessions.End(EndProbe::kSkip);
  motion.Settle();
  ExpectAcknowledged(context, outcome, MountCommand::kPulse, "every pulse", limit);
  const MountState end = WaitForRest(context, limit);
  if (PulsesMove(action)) ExpectMotion(start, end, SteadySeconds() - begin);
  context.output.Done("pulses acknowledged: " + MovedLine("", start, end.position),
                      JsonObject()
                          .Add("northMs", ms[0])
                          .Add("southMs", ms[1])
                          .Add("eastMs", ms[2])
                          .Add("westMs", ms[3])
                          .Add("rateRa", action.rateRa)
                          .Add("rateDec", action.rateDec)
                          .Append(MovedObject(start, end)));
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
