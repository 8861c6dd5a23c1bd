// SPDX-License-Identifier: MIT
// Printing.
#include "console/output.h"

#include <cstdio>
#include <utility>

#include "console/error_line.h"
#include "console/terminal.h"

namespace velquinctl {
namespace {

void Write(std::FILE* stream, std::string_view text) {
  std::fwrite(text.data(), 1, text.size(), stream);
  std::fflush(stream);
}

}  // namespace

void WriteOut(std::string_view text) {
  Write(stdout, text);
}

void WriteError(std::string_view text) {
  Write(stderr, text);
}

void WriteErrorLine(std::string text) {
  WriteError(ErrorLine(std::move(text)) + '\n');
}

JsonObject Output::ObjectHead(bool ok) const {
  JsonObject head;
  head.Add("command", request_.command);
  if (!request_.address.empty()) head.Add("address", request_.address);
  head.Add("ok", ok);
  return head;
}

void Output::Answer(const std::string& text, const JsonObject& details) const {
  WriteOut((Json() ? ObjectHead(true).Append(details).Text() : text) + '\n');
}

void Output::Done(const std::string& text, const JsonObject& details) const {
  if (Json() || !Quiet()) Answer(text, details);
}

void Output::Failed(const std::string& place, const std::string& text, int exitCode) const {
  if (Json()) {
    JsonObject failure = ObjectHead(false).Add("error", text).Add("exitCode", exitCode);
    if (place != kProgramName) failure.Add("place", place);
    WriteOut(failure.Text() + '\n');
  }
  WriteErrorLine(place + ": " + text);
}

ProgressMode Output::Progress() const {
  const ProgressMode mode = request_.options.progress;
  if (Quiet()) return ProgressMode::kNone;
  if (mode != ProgressMode::kAuto) return mode;
  if (Json()) return ProgressMode::kNone;
  return Terminal::OutputIsTerminal() ? ProgressMode::kLive : ProgressMode::kPlain;
}

ProgressLine::Writer Output::ProgressWriter() const {
  return Json() ? WriteError : WriteOut;
}

}  // namespace velquinctl
