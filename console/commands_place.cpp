// SPDX-License-Identifier: MIT
// The commands that bring the mount to a place of its own: stop, home, park, unpark.
#include <cstdio>

#include "console/angle_text.h"
#include "console/commands.h"
#include "console/failure.h"
#include "console/fresh_look.h"
#include "console/mount_poll.h"
#include "console/mount_stop.h"
#include "console/slew_watch.h"

namespace velquinctl {
namespace {

constexpr double kSlewTimeoutSeconds = 300.0;
constexpr double kUnparkTimeoutSeconds = 10.0;
constexpr double kRestSeconds = 1.5;  // how long a mount that was stopped has to be seen at rest
// How long a mount may take to begin.
constexpr double kBeginSeconds = 8.0;
// When every exchange is answered within its half second, a reading is newer than a command sent so
// long before: one poll may be running, the worker sleeps 0.1 s, then come the command and a poll.
constexpr double kFreshSeconds = 1.8;

std::string MovingText(const char* what, const SlewWatch& watch, double seconds,
                       const SkyPosition& position) {
  char time[32];
  std::snprintf(time, sizeof time, "%.1f s", seconds);
  return std::string(what) + "  " + PositionText(position) + "  " +
         FormatDistance(watch.TravelDegrees()) + " from the start  " + time;
}

/// A slew to a place that the controller alone knows.
struct PlaceSlew {
  MountCommand command;
  TelescopeHomeFn Driver::* send;  // park's is of the same type
  const char* doing;               // "going home"
  const char* reached;             // "home, at"
  bool parks;                      // the mount is not ready afterwards
};

/// @return whether this reading, with those before it, shows the end of the slew.
bool Arrived(const PlaceSlew& slew, const SlewWatch& watch, double seconds,
             const MountState& state) {
  if (!watch.AtRest() || seconds < kFreshSeconds) return false;
  if (slew.parks) return !state.ready;
  return watch.Moved() || seconds >= kBeginSeconds;
}

/// Follows the slew in the session that sent it. @return the last reading.
MountState FollowSlew(const CommandContext& context, const Session& session, const PlaceSlew& slew,
                      SlewWatch& watch, Motion& motion) {
  ProgressLine line(context.output.Progress(), context.output.ProgressWriter());
  MountState end;
  double lastSeconds = 0.0;
  const auto step = [&](double seconds, const MountState& state) {
    end = state;
    lastSeconds = seconds;
    watch.Add(seconds, state.position);
    line.Show(seconds, MovingText(slew.doing, watch, seconds, state.position));
    return Arrived(slew, watch, seconds, state);
  };
  const auto whenLate = [&]() -> std::string {
    if (watch.Moved() && !watch.AtRest()) return "the mount was still moving at the time limit";
    const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
    // A mount that has had no time to begin may do so yet: it is stopped.
    const bool refused = lastSeconds >= kBeginSeconds && watch.AtRest();
    if (refused && outcome.Acknowledged(slew.command) && outcome.ReadingsComplete())
      motion.Settle();
    return "the mount did not do it in time; it reports " + PositionText(end.position) + ", " +
           ReadyText(end);
  };
  PollMount(context, session,
            {.limit = context.Limit(kSlewTimeoutSeconds),
             .step = step,
             .whenLate = whenLate,
             .motion = &motion});
  return end;
}

/// Looks again, because an answer was missing: what was seen may be old.
FreshLook FollowAnew(const CommandContext& context, const PlaceSlew& slew, SlewWatch& watch) {
  const auto makeStep = [&]() -> LookStep {
    watch.Clear();
    return [&, anew = watch](double seconds, const MountState& state) mutable {
      anew.Add(seconds, state.position);
      const bool arrived = Arrived(slew, anew, seconds, state);
      if (arrived) watch = anew;
      return arrived;
    };
  };
  FreshLook look = WatchAnew(context, context.Limit(kSlewTimeoutSeconds), makeStep);
  if (look.state) watch.NoteTravel(look.state->position);
  return look;
}

/// @throws Failure for a slew that ended otherwise than it should
void JudgeSlew(const PlaceSlew& slew, const SlewWatch& watch, bool acknowledged,
               const MountState& end) {
  const std::string where = PositionText(end.position);
  if (!acknowledged) {
    throw Failure(ExitCode::kMountFailed,
                  "the controller did not acknowledge the command, though it may have obeyed it: "
                  "the mount rests at " +
                      where + ", " + ReadyText(end));
  }
  if (slew.parks) return;
  if (watch.Moved()) {
    if (watch.RestsAsAtHome()) return;
    throw Failure(ExitCode::kMountFailed, "the mount moved and rests at " + where + ", " +
                                              ReadyText(end) +
                                              "; whether that is home is not known");
  }
  throw Failure(ExitCode::kMountFailed,
                "the controller acknowledged the command, but the mount did not move: it was at "
                "home already, or it refused; it reports " +
                    where);
}

void PerformPlaceSlew(const CommandContext& context, const PlaceSlew& slew) {
  const Session& session = context.Connect();
  SlewWatch watch(session.Read().position);
  WithStopWhenBrokenOff(context, [&](Motion& motion) {
    motion.Begin();
    (session.Exports().*slew.send)(nullptr);
    FreshLook look{true, FollowSlew(context, session, slew, watch, motion)};
    const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
    if (!outcome.ReadingsComplete()) look = FollowAnew(context, slew, watch);
    if (!look.holds) {
      throw Failure(ExitCode::kMountFailed, context.request.address +
                                                " stopped responding, and no reading shows the "
                                                "mount where it was sent");
    }
    motion.Settle();
    JudgeSlew(slew, watch, outcome.Acknowledged(slew.command), *look.state);
    context.output.Done(std::string(slew.reached) + ' ' + PositionText(look.state->position),
                        StateObject(*look.state).Add("moved", watch.Moved()));
  });
}

/// @throws Failure unless a new reading shows the mount at rest after the acknowledged stop
MountState WaitForStop(const CommandContext& context, const TimeLimit& limit) {
  const FreshLook look = WatchAnew(context, limit, [] { return RestStep(kRestSeconds); });
  if (look.holds) return *look.state;
  throw Failure(ExitCode::kMountFailed,
                std::string("the controller acknowledged the stop, but ") +
                    (look.state ? "no reading shows the mount at rest; it last reported " +
                                      PositionText(look.state->position)
                                : "reported no position after it") +
                    "; " + kMayStillMove);
}

}  // namespace

void PerformStop(const CommandContext& context) {
  const TimeLimit limit = context.Limit(kStopSeconds);
  Motion motion;
  motion.Begin();
  StopReport report;
  try {
    report = StopMount(context, limit, true);
    if (!report.acknowledged) {
      throw Failure(
          ExitCode::kMountFailed,
          (report.lastFailure.empty() ? "" : report.lastFailure + "; ") + StopText(report));
    }
    const MountState end = WaitForStop(context, limit);
    context.output.Done("stopped at " + PositionText(end.position), StateObject(end));
  } catch (const Failure& failure) {
    if (failure.Code() != ExitCode::kInterrupted) throw;
    throw Failure(failure.Code(), failure.what() + ("; " + StopText(report)));
  }
}

void PerformHome(const CommandContext& context) {
  PerformPlaceSlew(context, {.command = MountCommand::kHome,
                             .send = &Driver::Home,
                             .doing = "going home",
                             .reached = "home, at",
                             .parks = false});
}

void PerformPark(const CommandContext& context) {
  PerformPlaceSlew(context, {.command = MountCommand::kPark,
                             .send = &Driver::Park,
                             .doing = "parking",
                             .reached = "parked at",
                             .parks = true});
}

void PerformUnpark(const CommandContext& context) {
  const TimeLimit limit = context.Limit(kUnparkTimeoutSeconds);
  context.Connect().Exports().UnPark(nullptr);
  const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
  ExpectAcknowledged(context, outcome, MountCommand::kUnpark, "unpark", limit);
  const FreshLook look =
      LookAnew(context, limit, [](double, const MountState& state) { return state.ready; });
  if (!look.holds) {
    throw Failure(ExitCode::kMountFailed,
                  look.state ? "the mount is still parked or not ready"
                             : context.request.address +
                                   " acknowledged the command and then stopped responding: "
                                   "whether the mount is ready is not known");
  }
  context.output.Done("unparked: the mount is ready, at " + PositionText(look.state->position),
                      StateObject(*look.state));
}

}  // namespace velquinctl
