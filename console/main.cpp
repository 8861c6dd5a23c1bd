// SPDX-License-Identifier: MIT
// velquinctl: drives a mount from the command line through velquin.dll, of which it uses the public
// header and nothing else.
#include <exception>
#include <variant>

#include "console/command_line.h"
#include "console/commands.h"
#include "console/failure.h"
#include "console/terminal.h"

namespace velquinctl {
namespace {

ExitCode PerformRequest(const Request& request) {
  const Interrupt interrupt;
  MessageWatch messages;
  if (std::holds_alternative<RunAction>(request.action))
    return RunScript(request, messages, interrupt);
  CheckBeforehand(request);
  SessionHolder sessions(messages);
  const Output output(request);
  return Perform({request, output, sessions, messages, interrupt}, kProgramName);
}

ExitCode Main() {
  try {
    const auto parsed = ParseCommandLine(Terminal::CommandLineWords(), {});
    if (const auto* help = std::get_if<HelpText>(&parsed)) {
      WriteOut(help->text);
      return ExitCode::kDone;
    }
    return PerformRequest(std::get<Request>(parsed));
  } catch (const Failure& failure) {
    WriteErrorLine(std::string(kProgramName) + ": " + failure.what());
    return failure.Code();
  } catch (const std::exception& error) {
    WriteErrorLine(std::string(kProgramName) + ": unexpected error: " + error.what());
    return ExitCode::kMountFailed;
  }
}

}  // namespace
}  // namespace velquinctl

int main() {
  const velquinctl::Terminal terminal;
  return static_cast<int>(velquinctl::Main());
}
