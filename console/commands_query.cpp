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

std::string StateText(const MomentView& view) {
  std::string text = ReadyText(*view.look.state);
  if (view.look.state->ready || view.Moves()) text += std::string(", ") + MotionWord(view.motion);
  if (view.Moves()) text += " at " + SpeedText(view.degreesPerSecond);
  return text;
}

/// @throws Failure when not every answer came in time; it tells the position
MomentView LookForAMoment(const CommandContext& context) {
  context.Connect();
  const MomentView view = WatchForAMoment(context, context.Limit(kStatusSeconds));
  const FreshLook& look = view.look;
  if (look.holds) return view;
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
  const MomentView view = LookForAMoment(context);
  const MountState& state = *view.look.state;
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
