// SPDX-License-Identifier: MIT
// The performing of requests: one function for each action, in one file for each family.
// All of them run on the program's one thread, print their result, and throw Failure when the mount
// did not do it.
#pragma once

#include <functional>
#include <string>

#include "console/exit_codes.h"
#include "console/interrupt.h"
#include "console/message_watch.h"
#include "console/output.h"
#include "console/request.h"
#include "console/session.h"
#include "console/time_limit.h"

namespace velquinctl {

/// What a command works with; lives as long as the command runs.
struct CommandContext {
  const Request& request;
  const Output& output;
  SessionHolder& sessions;
  MessageWatch& messages;
  const Interrupt& interrupt;
  double begin = SteadySeconds();  ///< when the command began

  /// @return a new session with the request's mount, connected, its position known.
  Session& Connect() const;
  /// @return the user's time limit, or the command's own.
  double TimeoutSeconds(double usual) const {
    return request.options.timeoutSeconds.value_or(usual);
  }
  /// @return the same, counted from the command's beginning.
  TimeLimit Limit(double usual) const { return TimeLimit(TimeoutSeconds(usual), begin); }
};

/// Judges what only the machine knows (files, folders, code page) before anything is sent.
/// @throws Failure with kWrongUsage
void CheckBeforehand(const Request& request);

/// Performs a request that is not run, and prints what goes wrong.
/// @param place what that line begins with: kProgramName, or "FILE:LINE" of a script
ExitCode Perform(const CommandContext& context, const std::string& place);

/// Performs the file of a run request, and prints what goes wrong.
ExitCode RunScript(const Request& request, MessageWatch& messages, const Interrupt& interrupt);

void PerformCheck(const CommandContext& context);
void PerformStatus(const CommandContext& context, const StatusAction& action);
void PerformMonitor(const CommandContext& context, const MonitorAction& action);
void PerformGoto(const CommandContext& context, const GotoAction& action);
void PerformSync(const CommandContext& context, const SyncAction& action);
void PerformStop(const CommandContext& context);
void PerformHome(const CommandContext& context);
void PerformPark(const CommandContext& context);
void PerformUnpark(const CommandContext& context);
void PerformSlew(const CommandContext& context, const SlewAction& action);
void PerformPulse(const CommandContext& context, const PulseAction& action);
void PerformGuideSpeed(const CommandContext& context, const GuideSpeedAction& action);
void PerformSite(const CommandContext& context, const SiteAction& action);
void PerformAlignReset(const CommandContext& context);
void PerformIni(const CommandContext& context, const IniAction& action);
void PerformDialog(const CommandContext& context, const DialogAction& action);

}  // namespace velquinctl
