// SPDX-License-Identifier: MIT
// Everything velquinctl prints: results for people or for programs, progress, and the one line
// about what went wrong.
#pragma once

#include <string>
#include <string_view>

#include "console/json_object.h"
#include "console/progress_line.h"
#include "console/request.h"

namespace velquinctl {

inline constexpr const char* kProgramName = "velquinctl";

/// The output of one command. One thread.
class Output {
 public:
  /// @param request whose output this is; outlives the object
  explicit Output(const Request& request) : request_(request) {}

  /// What the user asked to know: a text for people, or an object for programs.
  void Answer(const std::string& text, const JsonObject& details) const;
  /// That something is done: as Answer, but not told to people who want it quiet.
  void Done(const std::string& text, const JsonObject& details) const;
  /// A failure: always a line on standard error, and an object for programs as well.
  /// @param place kProgramName, or "FILE:LINE" of a script
  void Failed(const std::string& place, const std::string& text, int exitCode) const;

  /// The object that every result of this command begins with.
  JsonObject ObjectHead(bool ok) const;
  bool Json() const { return request_.options.json; }
  bool Quiet() const { return request_.options.quiet; }

  /// @return how progress is to be shown: beside a JSON result only when it was asked for.
  ProgressMode Progress() const;
  /// @return where progress is to be written: to standard error when the results are for a program.
  ProgressLine::Writer ProgressWriter() const;

 private:
  const Request& request_;
};

/// Writes at once to standard output or standard error.
void WriteOut(std::string_view text);
void WriteError(std::string_view text);

/// Writes a text as exactly one line to standard error.
void WriteErrorLine(std::string text);

}  // namespace velquinctl
