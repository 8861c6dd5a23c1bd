// SPDX-License-Identifier: MIT
// From a request to the function that performs it.
#include "console/commands.h"

#include "console/failure.h"
#include "console/files.h"
#include "console/host_address.h"
#include "console/text_encoding.h"

namespace velquinctl {
namespace {

constexpr double kConnectSeconds = 10.0;

/// Calls the one function that fits the action.
struct Performer {
  const CommandContext& context;

  void operator()(const CheckAction&) const { PerformCheck(context); }
  void operator()(const StatusAction& action) const { PerformStatus(context, action); }
  void operator()(const GotoAction& action) const { PerformGoto(context, action); }
  void operator()(const SyncAction& action) const { PerformSync(context, action); }
  void operator()(const StopAction&) const { PerformStop(context); }
  void operator()(const HomeAction&) const { PerformHome(context); }
  void operator()(const ParkAction&) const { PerformPark(context); }
  void operator()(const UnparkAction&) const { PerformUnpark(context); }
  void operator()(const MonitorAction& action) const { PerformMonitor(context, action); }
  void operator()(const SlewAction& action) const { PerformSlew(context, action); }
  void operator()(const PulseAction& action) const { PerformPulse(context, action); }
  void operator()(const GuideSpeedAction& action) const { PerformGuideSpeed(context, action); }
  void operator()(const SiteAction& action) const { PerformSite(context, action); }
  void operator()(const AlignResetAction&) const { PerformAlignReset(context); }
  void operator()(const IniAction& action) const { PerformIni(context, action); }
  void operator()(const DialogAction& action) const { PerformDialog(context, action); }
  void operator()(const RunAction&) const {}  // RunScript performs it
};

[[noreturn]] void Refuse(const std::string& text) {
  throw Failure(ExitCode::kWrongUsage, text);
}

/// A hand move or a pulse that lasts longer than the command may is a slip.
void ExpectTimeFor(const CommonOptions& options, double seconds, const char* what) {
  if (options.timeoutSeconds && *options.timeoutSeconds <= seconds)
    Refuse(std::string("--timeout must be longer than ") + what);
}

}  // namespace

Session& CommandContext::Connect() const {
  Session& session = sessions.Open(SettingsOf(request));
  session.WaitForPosition(interrupt, Limit(kConnectSeconds).LeftSeconds());
  return session;
}

void CheckBeforehand(const Request& request) {
  const CommonOptions& options = request.options;
  CheckAddress(request.address);
  SystemFromUtf8("--name", options.name);
  SystemFromUtf8("--log-path", options.logPath);
  SystemFromUtf8("--log-prefix", options.logPrefix);
  if (!options.logPath.empty() && !IsFolder(options.logPath))
    Refuse("--log-path: no such folder: " + options.logPath);
  if (const auto* slew = std::get_if<SlewAction>(&request.action))
    ExpectTimeFor(options, slew->forSeconds, "--for");
  if (const auto* pulse = std::get_if<PulseAction>(&request.action))
    ExpectTimeFor(options, pulse->DriverSeconds(), "all pulses together");
  if (const auto* ini = std::get_if<IniAction>(&request.action)) {
    SystemFromUtf8("SECTION", ini->section);
    SystemFromUtf8("FILE", FullPath(ini->file));
    if (!IsFile(ini->file)) Refuse("no such file: " + ini->file);
  }
}

ExitCode Perform(const CommandContext& context, const std::string& place) {
  context.messages.SetAnswering(!context.request.options.showMessages);
  ExitCode code = ExitCode::kDone;
  try {
    std::visit(Performer{context}, context.request.action);
  } catch (const Failure& failure) {
    code = failure.Code();
    context.output.Failed(place, failure.what(), static_cast<int>(code));
  }
  for (const std::string& text : context.messages.Take())
    WriteErrorLine(place + ": the driver says: " + text);
  return code;
}

}  // namespace velquinctl
