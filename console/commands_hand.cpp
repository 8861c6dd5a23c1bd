// SPDX-License-Identifier: MIT
// The commands that move by hand or by guide pulse: slew, pulse, guide-speed.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numeric>

#include "console/angle_text.h"
#include "console/commands.h"
#include "console/failure.h"
#include "console/motion_watch.h"
#include "console/mount_poll.h"
#include "console/sky_distance.h"
#include "console/sky_drift.h"
#include "console/steady_time.h"

namespace velquinctl {
namespace {

constexpr int kRenewMs = 100;         // each move lasts one second at the most unless renewed
constexpr int kPulsePauseMs = 50;     // the driver rests so long after each pulse
constexpr double kRestSeconds = 0.5;  // about five polls
constexpr double kRestDegrees = 0.02;
constexpr double kRestTimeoutSeconds = 10.0;
constexpr double kNoMotionDegrees = 1e-5;  // the controller tells positions in steps of this size

std::string NumberText(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

/// Waits until the position stays where it is. @return the state then.
MountState WaitForRest(const CommandContext& context, const Session& session) {
  MotionWatch motion(kRestSeconds);
  MountState end;
  const auto step = [&](double seconds, const MountState& state) {
    end = state;
    motion.Add(seconds, state.position);
    return motion.Full() && motion.SpreadDegrees() <= kRestDegrees;
  };
  const auto whenLate = [] { return std::string("the mount still moves"); };
  PollMount(context, session,
            {.timeoutSeconds = context.TimeoutSeconds(kRestTimeoutSeconds),
             .step = step,
             .whenLate = whenLate});
  return end;
}

/// @throws Failure when the mount was not ready, and only the sky went on.
void ExpectMoreThanDrift(const SkyPosition& start, const MountState& end, double seconds) {
  if (end.ready || !IsSkyDrift(start, end.position, seconds)) return;
  throw Failure(ExitCode::kMountFailed, "the mount did not move: it is " + ReadyText(end));
}

/// Holds the button: renews the move until its time is over.
void HoldSlew(const CommandContext& context, const Session& session, const SlewAction& action) {
  ProgressLine line(context.output.Progress(), context.output.ProgressWriter());
  const double begin = SteadySeconds();
  for (bool last = false; !last;) {
    session.Exports().Slew(nullptr, action.direction, 1, action.speed);
    const double seconds = SteadySeconds() - begin;
    line.Show(seconds,
              "moving " + action.directionName + "  " + PositionText(session.Read().position));
    const double leftMs = std::max((action.forSeconds - seconds) * 1000.0, 0.0);
    last = leftMs <= kRenewMs;
    context.interrupt.SleepMs(last ? static_cast<int>(leftMs) : kRenewMs);
  }
}

}  // namespace

void PerformSlew(const CommandContext& context, const SlewAction& action) {
  const Session& session = context.Connect();
  const double begin = SteadySeconds();
  const SkyPosition start = session.Read().position;
  StopGuard stop(session);
  HoldSlew(context, session, action);
  session.Exports().Slew(nullptr, action.direction, 0, action.speed);
  // The release itself sends nothing; a move without direction ends the last one at once.
  session.Exports().Slew(nullptr, 0, 1, action.speed);
  stop.Disarm();
  const MountState end = WaitForRest(context, session);
  if (AxisDistanceDegrees(start, end.position) < kNoMotionDegrees)
    throw Failure(ExitCode::kMountFailed, "the mount did not move");
  ExpectMoreThanDrift(start, end, SteadySeconds() - begin);
  const double moved = SkyDistanceDegrees(start, end.position);
  context.output.Done("moved " + FormatDistance(moved) + ' ' + action.directionName + ", to " +
                          PositionText(end.position),
                      JsonObject()
                          .Add("direction", action.directionName)
                          .Add("speed", action.speed)
                          .Append(StateObject(end))
                          .Add("movedDegrees", moved));
}

void PerformPulse(const CommandContext& context, const PulseAction& action) {
  const Session& session = context.Connect();
  const double begin = SteadySeconds();
  const SkyPosition start = session.Read().position;
  const auto& ms = action.lengthsMs;
  session.Exports().SlewPulseDuration(nullptr, ms[0], ms[1], ms[2], ms[3], action.rateRa,
                                      action.rateDec);
  // The driver reads no status until the last pulse is over.
  context.interrupt.SleepMs(std::accumulate(ms.begin(), ms.end(), 0, [](int sum, int length) {
    return sum + (length > 0 ? length + kPulsePauseMs : 0);
  }));
  const MountState end = WaitForRest(context, session);
  ExpectMoreThanDrift(start, end, SteadySeconds() - begin);
  const double moved = SkyDistanceDegrees(start, end.position);
  context.output.Done(
      "pulses sent: moved " + FormatDistance(moved) + ", to " + PositionText(end.position),
      JsonObject()
          .Add("northMs", ms[0])
          .Add("southMs", ms[1])
          .Add("eastMs", ms[2])
          .Add("westMs", ms[3])
          .Add("rateRa", action.rateRa)
          .Add("rateDec", action.rateDec)
          .Append(StateObject(end))
          .Add("movedDegrees", moved));
}

void PerformGuideSpeed(const CommandContext& context, const GuideSpeedAction& action) {
  context.Connect().Exports().SetGuideSpeed(nullptr, action.rateRa, action.rateDec);
  context.output.Done(
      "guide speeds sent: " + NumberText(action.rateRa) + " and " + NumberText(action.rateDec),
      JsonObject().Add("rateRa", action.rateRa).Add("rateDec", action.rateDec));
}

}  // namespace velquinctl
