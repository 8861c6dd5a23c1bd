// SPDX-License-Identifier: MIT
// The parser around the command definitions: common options, negative numbers, and messages that
// say in one line what is wrong.
#include "console/command_line.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "console/argument_values.h"
#include "console/command_definitions.h"
#include "console/failure.h"
#include "console/nearest_word.h"

namespace velquinctl {
namespace {

// A word such as -5:12:00 must not be taken for an option, so it travels through the parser with
// the typographical minus in front.
constexpr std::string_view kLongMinus = "\u2212";

constexpr const char* kFooter =
    "Examples:\n"
    "  velquinctl check 192.168.1.10\n"
    "  velquinctl goto 192.168.1.10 5h34m31.9s +22d00m52s\n"
    "  velquinctl goto 192.168.1.10 05:35:17 -5:23:28 --json\n"
    "  velquinctl monitor 192.168.1.10 --for 60\n"
    "Help with one command: velquinctl help COMMAND\n"
    "\n"
    "Exit codes:\n"
    "  0    done\n"
    "  1    the mount did not do it: no answer, refused, or not in time\n"
    "  2    wrong usage or input; nothing was sent\n"
    "  3    velquin.dll is missing or cannot be used\n"
    "  130  interrupted by Ctrl-C (a second Ctrl-C ends at once)";

/// Texts of the common options that need judging.
struct CommonTexts {
  std::string timeout, progress;
};

std::string WithoutLongMinus(std::string text) {
  if (text.starts_with(kLongMinus)) text.replace(0, kLongMinus.size(), "-");
  return text;
}

/// @return the words in the order the parser wants them: last first.
std::vector<std::string> ProtectedWords(const std::vector<std::string>& words) {
  std::vector<std::string> reversed;
  for (auto word = words.rbegin(); word != words.rend(); ++word) {
    const bool number = word->size() > 1 && (*word)[0] == '-' &&
                        std::string_view("0123456789.").find((*word)[1]) != std::string_view::npos;
    reversed.push_back(number ? std::string(kLongMinus) + word->substr(1) : *word);
  }
  return reversed;
}

void Unprotect(ArgumentTexts& t) {
  for (std::string* text :
       {&t.address,   &t.ra,       &t.dec,      &t.direction, &t.file,      &t.section, &t.topic,
        &t.tolerance, &t.interval, &t.duration, &t.speed,     &t.north,     &t.south,   &t.east,
        &t.west,      &t.rateRa,   &t.rateDec,  &t.latitude,  &t.longitude, &t.zone,    &t.time})
    *text = WithoutLongMinus(*text);
}

bool IsFlag(std::string_view option) {
  static constexpr std::string_view kFlags[] = {
      "--json", "--quiet", "--show-messages", "--help", "--version", "--watch", "--yes"};
  return std::find(std::begin(kFlags), std::end(kFlags), option) != std::end(kFlags);
}

/// @return whether the word after this one is its value.
bool TakesNextWord(const std::string& word) {
  return word.starts_with("--") && word.size() > 2 && word.find('=') == std::string::npos &&
         !IsFlag(word);
}

/// What the parser lets pass: an empty text, which says nothing, not even that the default is
/// wanted (a quoted variable that is not set looks like that), and --json=010 for a --json.
void RefuseEmptyWords(const std::vector<std::string>& words) {
  for (size_t i = 0; i < words.size(); ++i) {
    const std::string& word = words[i];
    const std::string name = word.substr(0, word.find('='));
    if (name != word && IsFlag(name))
      throw Failure(ExitCode::kWrongUsage, name + " takes no value");
    if (!word.empty()) continue;
    if (i > 0 && TakesNextWord(words[i - 1]))
      throw Failure(ExitCode::kWrongUsage, words[i - 1] + " needs a value");
    throw Failure(ExitCode::kWrongUsage, "argument " + std::to_string(i + 1) + " is empty");
  }
}

/// For the options that take any text: a word like --json after them is the next option, and the
/// text was forgotten.
std::string RefuseOption(const std::string& text) {
  return text.starts_with("--") ? '"' + text + "\" is not a valid value" : std::string();
}

void DefineCommonOptions(CLI::App& app, CommonOptions& options, CommonTexts& texts) {
  app.set_version_flag("--version", "velquinctl " VELQUIN_VERSION);
  app.add_flag("--json", options.json, "one JSON object per result on standard output");
  app.add_flag("--quiet", options.quiet, "print results only: no progress, no confirmations");
  app.add_option("--progress", texts.progress,
                 "auto, live (one line redrawn), plain (a line a second) or none")
      ->type_name("HOW");
  app.add_option("--timeout", texts.timeout,
                 "seconds to wait for the mount (default 300 for goto, home and park, 30 for stop, "
                 "10 otherwise)")
      ->type_name("SECONDS");
  app.add_flag("--show-messages", options.showMessages,
               "leave the driver's message boxes on the screen instead of answering them");
  app.add_option("--library", options.library, "velquin.dll to use (default: beside velquinctl)")
      ->check(RefuseOption)
      ->type_name("PATH");
  app.add_option("--name", options.name, "title of the driver's message boxes")
      ->check(RefuseOption)
      ->type_name("TEXT");
  app.add_option("--log-path", options.logPath,
                 "folder of the time-out journal (default: the temporary folder)")
      ->check(RefuseOption)
      ->type_name("FOLDER");
  app.add_option("--log-prefix", options.logPrefix,
                 "beginning of the journal's file name (default velquinctl)")
      ->check(RefuseOption)
      ->type_name("TEXT");
}

std::string ParsedCommand(const CLI::App& app) {
  const auto commands = app.get_subcommands();
  return commands.empty() ? std::string() : commands.front()->get_name();
}

/// @return the parser's message, with its own way of saying that a value is missing put plainly.
std::string WithoutParserSpeech(std::string text) {
  static constexpr std::string_view kNoValue = ": 1 required ";
  static constexpr std::string_view kMissing = " missing";
  const auto at = text.find(kNoValue);
  if (at == std::string::npos || !text.ends_with(kMissing)) return text;
  text.erase(text.size() - kMissing.size());
  return text.replace(at, kNoValue.size(), " needs a value: ");
}

/// @return the long options that hold for a command and for all of them.
std::vector<std::string> OptionNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* owner : app.get_subcommands()) {
    for (const CLI::Option* option : owner->get_options()) {
      for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
    }
  }
  for (const CLI::Option* option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

std::vector<std::string> CommandNames(const CLI::App& app) {
  std::vector<std::string> names;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; }))
    names.push_back(command->get_name());
  return names;
}

std::string Unknown(const std::string& kind, const std::string& word, const std::string& nearest) {
  return "unknown " + kind + " \"" + word + '"' +
         (nearest.empty() ? std::string() : ", did you mean " + nearest + '?');
}

std::string UnknownCommand(const CLI::App& app, const std::string& word) {
  return Unknown("command", word, NearestWord(word, CommandNames(app)));
}

/// @return what is wrong with the words that found no place; empty when all have one. An option
///         comes first, because what is missing may be what it was meant for.
std::string ComplaintAboutLeftWords(const CLI::App& app) {
  std::vector<std::string> left = app.remaining(true);
  const auto option = std::find_if(left.begin(), left.end(),
                                   [](const std::string& word) { return word.starts_with("-"); });
  if (option != left.end()) {
    const std::string name = option->substr(0, option->find('='));
    return Unknown("option", *option, NearestWord(name, OptionNames(app)));
  }
  if (left.empty()) return {};
  for (std::string& word : left) word = WithoutLongMinus(word);
  if (ParsedCommand(app).empty()) return UnknownCommand(app, left.front());
  std::string text = left.size() == 1 ? "unexpected argument" : "unexpected arguments";
  for (const std::string& word : left) text += " \"" + word + '"';
  return text;
}

[[noreturn]] void ThrowGeneralUsage(const std::string& text) {
  throw Failure(ExitCode::kWrongUsage, text + " (velquinctl --help lists commands and options)");
}

/// @param address the first argument of the command, if there was one
[[noreturn]] void ThrowUsage(const CLI::App& app, const CLI::ParseError& error,
                             const std::string& address) {
  const std::string command = ParsedCommand(app);
  const bool missing = dynamic_cast<const CLI::RequiredError*>(&error) != nullptr;
  std::string text = ComplaintAboutLeftWords(app);
  if (text.empty() && missing && !address.empty())
    RefuseForgottenAddress(WithoutLongMinus(address));
  if (text.empty() && missing && command.empty()) text = "no command given";
  if (text.empty()) text = WithoutParserSpeech(error.what());
  if (command.empty()) ThrowGeneralUsage(text);
  throw Failure(ExitCode::kWrongUsage,
                command + ": " + text + " (see velquinctl help " + command + ')');
}

/// @return the help that was asked for, or nothing when the words were read to their end.
std::string Parse(CLI::App& app, const std::vector<std::string>& words,
                  const std::string& address) {
  try {
    app.parse(ProtectedWords(words));
  } catch (const CLI::CallForHelp&) {
    return app.help();
  } catch (const CLI::CallForVersion& version) {
    return version.what() + std::string("\n");
  } catch (const CLI::ParseError& error) {
    ThrowUsage(app, error, address);
  }
  return {};
}

std::string HelpAbout(const CLI::App& app, const std::string& command) {
  // The parser's own call would answer with the help of the command that was given.
  if (command.empty())
    return app.get_formatter()->make_help(&app, app.get_name(), CLI::AppFormatMode::Normal);
  const std::vector<std::string> commands = CommandNames(app);
  if (std::find(commands.begin(), commands.end(), command) == commands.end())
    ThrowGeneralUsage(UnknownCommand(app, command));
  return app.get_subcommand(command)->help(app.get_name());
}

void SetUpApp(CLI::App& app) {
  app.name("velquinctl");
  app.allow_windows_style_options(false);
  app.fallthrough();
  app.require_subcommand(1, 1);
  app.get_formatter()->column_width(26);
  app.get_formatter()->label("OPTIONS", "options");
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.get_formatter()->label("REQUIRED", "");
  app.footer(kFooter);
}

}  // namespace

std::variant<Request, HelpText> ParseCommandLine(const std::vector<std::string>& words,
                                                 const CommonOptions& defaults) {
  CLI::App app("velquinctl drives a mount through velquin.dll.");
  SetUpApp(app);
  Request request;
  request.options = defaults;
  CommonTexts common;
  ArgumentTexts texts;
  DefineCommonOptions(app, request.options, common);
  CommandDefinitions definitions{app, texts, {}};
  DefineCommands(definitions);

  RefuseEmptyWords(words);
  const std::string help = Parse(app, words, texts.address);
  if (!help.empty()) return HelpText{help};

  Unprotect(texts);
  request.command = ParsedCommand(app);
  if (request.command == kHelpCommand) return HelpText{HelpAbout(app, texts.topic)};
  if (!common.progress.empty()) request.options.progress = ProgressArgument(common.progress);
  if (!common.timeout.empty())
    request.options.timeoutSeconds = SecondsArgument("--timeout", WithoutLongMinus(common.timeout));
  FileNamePartArgument("--log-prefix", request.options.logPrefix);
  if (request.command != "run") request.address = AddressArgument(texts.address);
  request.action = definitions.makers.at(request.command)(texts);
  return request;
}

}  // namespace velquinctl
