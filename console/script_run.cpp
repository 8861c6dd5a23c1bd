// SPDX-License-Identifier: MIT
// The run command: all lines are judged first, then performed until one fails.
#include "console/commands.h"
#include "console/failure.h"
#include "console/files.h"
#include "console/script.h"

namespace velquinctl {
namespace {

constexpr size_t kLongestScript = 1'000'000;

std::string Place(const std::string& file, const ScriptLine& line) {
  return file + ':' + std::to_string(line.number);
}

/// @return the lines of the file, every one of them fit to be performed.
std::vector<ScriptLine> JudgedLines(const std::string& file, const CommonOptions& defaults) {
  const auto content = FileContent(file, kLongestScript);
  if (!content)
    throw Failure(ExitCode::kWrongUsage, std::string(kProgramName) + ": cannot read " + file);
  if (content->size() > kLongestScript)
    throw Failure(ExitCode::kWrongUsage, std::string(kProgramName) + ": " + file +
                                             " is too long for a script (more than a megabyte)");
  std::vector<ScriptLine> lines = ParseScript(*content, file, defaults);
  for (const ScriptLine& line : lines) {
    try {
      CheckBeforehand(line.request);
    } catch (const Failure& failure) {
      throw Failure(failure.Code(), Place(file, line) + ": " + failure.what());
    }
  }
  return lines;
}

}  // namespace

ExitCode RunScript(const Request& request, MessageWatch& messages, const Interrupt& interrupt) {
  const std::string& file = std::get<RunAction>(request.action).file;
  std::vector<ScriptLine> lines;
  try {
    lines = JudgedLines(file, request.options);
  } catch (const Failure& failure) {
    WriteErrorLine(failure.what());
    return failure.Code();
  }
  SessionHolder sessions(messages);
  for (const ScriptLine& line : lines) {
    const Output output(line.request);
    if (!output.Json() && !output.Quiet()) WriteOut("> " + line.text + '\n');
    const CommandContext context{line.request, output, sessions, messages, interrupt};
    const ExitCode code = Perform(context, Place(file, line));
    if (code != ExitCode::kDone) return code;
  }
  return ExitCode::kDone;
}

}  // namespace velquinctl
