// SPDX-License-Identifier: MIT
// The commands that only ask: check and status.
#include "console/angle_text.h"
#include "console/commands.h"
#include "console/driver_messages.h"
#include "console/failure.h"
#include "console/fresh_look.h"
#include "console/host_address.h"
#include "console/mount_motion.h"
#include "console/mount_poll.h"
#include "console/text_encoding.h"

namespace velquinctl {
namespace {

constexpr double kStatusSeconds = 10.0;
// Longer than it takes until a slow link has brought another reading.
constexpr double kMomentSeconds = 0.8;

std::string Degrees(double degrees) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4f\u00b0", degrees);
  return text;
}

std::string SpeedText(double degreesPerSecond) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f\u00b0/s", degreesPerSecond);
  return text;
}

/// A mount seen for a moment.
struct StatusView {
  MountState state;
  MountMotion motion = MountMotion::kTracking;
  double degreesPerSecond = 0.0;
};

std::string StateText(const StatusView& view) {
  const bool moves = view.motion == MountMotion::kMoving || view.motion == MountMotion::kSlewing;
  std::string text = ReadyText(view.state);
  if (view.state.ready || moves) text += std::string(", ") + MotionWord(view.motion);
  if (moves) text += " at " + SpeedText(view.degreesPerSecond);
  return text;
}

/// Watches the mount for a moment, in sessions of its own until every answer came.
/// @throws Failure when that does not happen in time; it tells the position
StatusView LookForAMoment(const CommandContext& context) {
  StatusView view;
  const auto makeStep = [&]() -> LookStep {
    return
        [&, first = std::optional<SkyPosition>()](double seconds, const MountState& state) mutable {
          if (!first) first = state.position;
          if (seconds < kMomentSeconds) return false;
          view.motion = MotionBetween(*first, state.position, seconds);
          view.degreesPerSecond = SpeedBetween(*first, state.position, seconds);
          return true;
        };
  };
  context.Connect();
  const FreshLook look = WatchAnew(context, context.Limit(kStatusSeconds), makeStep);
  if (look.holds) {
    view.state = *look.state;
    return view;
  }
  if (!look.state) throw Failure(ExitCode::kMountFailed, "there was no time for a reading");
  throw Failure(ExitCode::kMountFailed,
                context.request.address + " stopped responding: the mount was last at " +
                    PositionText(look.state->position) + ", and whether it moves is not known");
}

}  // namespace

void PerformCheck(const CommandContext& context) {
  // While a session runs, the driver would answer from it, whatever the address.
  context.sessions.Close();
  const std::string& address = context.request.address;
  const Driver driver(context.request.options.library);
  char version[256] = {};
  char extra[8] = {};
  const std::string host = ResolvedAddress(address);
  if (driver.Check(nullptr, host.c_str(), nullptr, version, sizeof version, extra, sizeof extra) !=
      1)
    throw Failure(ExitCode::kMountFailed,
                  "no answer from " + address + DriverSays(context.messages));
  const std::string text = Utf8FromSystem(version);
  context.output.Answer(address + " answers: version " + text, JsonObject().Add("version", text));
}

void PerformStatus(const CommandContext& context, const StatusAction& action) {
  if (action.watch) {
    PerformMonitor(context, {1.0, action.forSeconds, true});
    return;
  }
  const StatusView view = LookForAMoment(context);
  const MountState& state = view.state;
  const SkyPosition& position = state.position;
  const std::string text = "right ascension   " + FormatRightAscension(position.raDegrees) + "  (" +
                           Degrees(position.raDegrees) + ")\ndeclination      " +
                           FormatDeclination(position.decDegrees) + "   (" +
                           Degrees(position.decDegrees) + ")\nstate             " +
                           StateText(view) + "\npier side         " +
                           (state.pierSide < 0 ? "unknown" : std::to_string(state.pierSide));
  JsonObject details = StateObject(state);
  details.Add("motion", MotionWord(view.motion))
      .Add("speedDegreesPerSecond", view.degreesPerSecond);
  context.output.Answer(text, details);
}

}  // namespace velquinctl
