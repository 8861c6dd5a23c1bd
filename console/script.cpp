// SPDX-License-Identifier: MIT
// The reading of scripts.
#include "console/script.h"

#include <algorithm>
#include <utility>

#include "console/command_line.h"
#include "console/failure.h"
#include "console/script_text.h"

namespace velquinctl {
namespace {

constexpr std::string_view kBlanks = " \t\r";

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

/// Takes one word off the front of `rest`, which begins with a letter of it. A quote counts where a
/// word or the value of an option begins; anywhere else it is the sign for seconds of arc.
/// @return false when the quote is not closed.
bool TakeWord(std::string_view& rest, std::string& word) {
  bool quoted = false;
  size_t at = 0;
  for (; at < rest.size(); ++at) {
    const char c = rest[at];
    if (c == '"' && (quoted || word.empty() || word.back() == '=')) {
      quoted = !quoted;
    } else if (!quoted && kBlanks.find(c) != std::string_view::npos) {
      break;
    } else {
      word += c;
    }
  }
  rest.remove_prefix(at);
  return !quoted;
}

Request ParseLine(std::string_view line, const CommonOptions& defaults) {
  std::vector<std::string> words;
  if (!SplitScriptLine(line, words)) throw Failure(ExitCode::kWrongUsage, "unclosed quote");
  if (!std::all_of(words.begin(), words.end(), IsUtf8))
    throw Failure(ExitCode::kWrongUsage, "not valid UTF-8 (save the file as UTF-8)");
  auto parsed = ParseCommandLine(words, defaults);
  if (std::holds_alternative<HelpText>(parsed))
    throw Failure(ExitCode::kWrongUsage, "help, --help and --version cannot be used in a script");
  if (std::holds_alternative<RunAction>(std::get<Request>(parsed).action))
    throw Failure(ExitCode::kWrongUsage, "a script cannot run another script");
  return std::get<Request>(std::move(parsed));
}

}  // namespace

bool SplitScriptLine(std::string_view line, std::vector<std::string>& words) {
  for (std::string_view rest = Trimmed(line); !rest.empty() && rest[0] != '#';
       rest = Trimmed(rest)) {
    std::string word;
    if (!TakeWord(rest, word)) return false;
    words.push_back(word);
  }
  return true;
}

std::vector<ScriptLine> ParseScript(std::string_view bytes, const std::string& fileName,
                                    const CommonOptions& defaults) {
  const std::string text = ScriptText(bytes, fileName);
  std::string_view content = text;
  std::vector<ScriptLine> lines;
  for (int number = 1; !content.empty(); ++number) {
    const size_t end = std::min(content.find('\n'), content.size());
    const std::string_view line = Trimmed(content.substr(0, end));
    content.remove_prefix(std::min(end + 1, content.size()));
    if (line.empty() || line[0] == '#') continue;
    try {
      lines.push_back({number, std::string(line), ParseLine(line, defaults)});
    } catch (const Failure& failure) {
      throw Failure(failure.Code(),
                    fileName + ':' + std::to_string(number) + ": " + failure.what());
    }
  }
  return lines;
}

}  // namespace velquinctl
