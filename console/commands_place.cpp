// SPDX-License-Identifier: MIT
// The commands that bring the mount to a place of its own: stop, home, park, unpark.
#include <cstdio>

#include "console/angle_text.h"
#include "console/commands.h"
#include "console/motion_watch.h"
#include "console/mount_poll.h"
#include "console/sky_distance.h"

namespace velquinctl {
namespace {

constexpr double kSlewTimeoutSeconds = 300.0;
constexpr double kStopTimeoutSeconds = 30.0;
constexpr double kUnparkTimeoutSeconds = 10.0;
// A mount counts as resting when it stayed below this speed for this long; a slew is far faster,
// and the sky itself (0.004 degrees a second, more in a hurried simulator) is slower.
constexpr double kRestSeconds = 1.5;
constexpr double kRestDegrees = 0.15 * kRestSeconds;
// As long as a dead link takes to show.
constexpr double kBeginSeconds = 8.0;

/// Follows a slew whose end is not known beforehand.
class SlewWatch {
 public:
  explicit SlewWatch(const SkyPosition& start) : start_(start) {}

  void Add(double seconds, const SkyPosition& position) {
    motion_.Add(seconds, position);
    if (motion_.SpreadDegrees() > kRestDegrees) moved_ = true;
    travelDegrees_ = SkyDistanceDegrees(start_, position);
  }

  bool Moved() const { return moved_; }
  bool Rests() const { return motion_.Full() && motion_.SpreadDegrees() <= kRestDegrees; }
  double TravelDegrees() const { return travelDegrees_; }

 private:
  const SkyPosition start_;
  MotionWatch motion_{kRestSeconds};
  bool moved_ = false;
  double travelDegrees_ = 0.0;
};

std::string MovingText(const char* what, const SlewWatch& watch, double seconds,
                       const SkyPosition& position) {
  char time[32];
  std::snprintf(time, sizeof time, "%.1f s", seconds);
  return std::string(what) + "  " + PositionText(position) + "  " +
         FormatDistance(watch.TravelDegrees()) + " from the start  " + time;
}

JsonObject SlewObject(const SlewWatch& watch, const MountState& state) {
  return StateObject(state).Add("moved", watch.Moved());
}

/// Sends a slew and follows it until `arrived` holds. @return the state at the end.
MountState FollowSlew(const CommandContext& context, const Session& session, const char* what,
                      int32_t (*command)(TelescopeWindow), SlewWatch& watch,
                      const std::function<bool(double, const MountState&)>& arrived) {
  ProgressLine line(context.output.Progress(), context.output.ProgressWriter());
  StopGuard stop(session);
  command(nullptr);
  MountState end;
  const auto step = [&](double seconds, const MountState& state) {
    end = state;
    watch.Add(seconds, state.position);
    line.Show(seconds, MovingText(what, watch, seconds, state.position));
    return arrived(seconds, state);
  };
  const auto whenLate = [&]() -> std::string {
    if (watch.Moved() && !watch.Rests())
      return "the mount was still moving when the time was over, and is being stopped";
    stop.Disarm();
    return "the mount did not do it in time; it reports " + PositionText(end.position) + ", " +
           ReadyText(end);
  };
  PollMount(context, session,
            {.timeoutSeconds = context.TimeoutSeconds(kSlewTimeoutSeconds),
             .step = step,
             .whenLate = whenLate,
             .stop = &stop});
  stop.Disarm();
  return end;
}

}  // namespace

void PerformStop(const CommandContext& context) {
  const Session& session = context.Connect();
  SlewWatch watch(session.Read().position);
  session.Exports().Stop(nullptr);
  MountState end;
  const auto step = [&](double seconds, const MountState& state) {
    end = state;
    watch.Add(seconds, state.position);
    return watch.Rests();
  };
  const auto whenLate = [] { return std::string("the mount still moves"); };
  PollMount(context, session,
            {.timeoutSeconds = context.TimeoutSeconds(kStopTimeoutSeconds),
             .step = step,
             .whenLate = whenLate});
  context.output.Done("stopped at " + PositionText(end.position), StateObject(end));
}

void PerformHome(const CommandContext& context) {
  const Session& session = context.Connect();
  SlewWatch watch(session.Read().position);
  const auto arrived = [&](double seconds, const MountState&) {
    return watch.Rests() && (watch.Moved() || seconds >= kBeginSeconds);
  };
  const MountState end =
      FollowSlew(context, session, "going home", session.Exports().Home, watch, arrived);
  context.output.Done(
      watch.Moved() ? "home, at " + PositionText(end.position)
                    : "the mount did not move: it was at home already, or it refused; it reports " +
                          PositionText(end.position),
      SlewObject(watch, end));
}

void PerformPark(const CommandContext& context) {
  const Session& session = context.Connect();
  SlewWatch watch(session.Read().position);
  const auto arrived = [&](double, const MountState& state) {
    return !state.ready && watch.Rests();
  };
  const MountState end =
      FollowSlew(context, session, "parking", session.Exports().Park, watch, arrived);
  context.output.Done("parked at " + PositionText(end.position), SlewObject(watch, end));
}

void PerformUnpark(const CommandContext& context) {
  const Session& session = context.Connect();
  session.Exports().UnPark(nullptr);
  MountState end;
  const auto step = [&](double, const MountState& state) {
    end = state;
    return state.ready;
  };
  const auto whenLate = [] { return std::string("the mount is still parked or not ready"); };
  PollMount(context, session,
            {.timeoutSeconds = context.TimeoutSeconds(kUnparkTimeoutSeconds),
             .step = step,
             .whenLate = whenLate});
  context.output.Done("unparked: the mount is ready, at " + PositionText(end.position),
                      StateObject(end));
}

}  // namespace velquinctl
