// SPDX-License-Identifier: MIT
// The commands that only ask: check and status.
#include "console/angle_text.h"
#include "console/commands.h"
#include "console/driver_messages.h"
#include "console/failure.h"
#include "console/host_address.h"
#include "console/mount_poll.h"
#include "console/text_encoding.h"

namespace velquinctl {
namespace {

std::string Degrees(double degrees) {
  char text[32];
  std::snprintf(text, sizeof text, "%.4f\u00b0", degrees);
  return text;
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
  const MountState state = context.Connect().Read();
  const SkyPosition& position = state.position;
  const std::string text = "right ascension   " + FormatRightAscension(position.raDegrees) + "  (" +
                           Degrees(position.raDegrees) + ")\ndeclination      " +
                           FormatDeclination(position.decDegrees) + "   (" +
                           Degrees(position.decDegrees) + ")\nstate             " +
                           ReadyText(state) + "\npier side         " +
                           (state.pierSide < 0 ? "unknown" : std::to_string(state.pierSide));
  context.output.Answer(text, StateObject(state));
}

}  // namespace velquinctl
