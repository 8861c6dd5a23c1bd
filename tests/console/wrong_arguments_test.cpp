// SPDX-License-Identifier: MIT
// Every command, argument and option with everything that one can get wrong: refused, in one line.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <map>

#include "console/command_line.h"
#include "console/error_line.h"
#include "console/failure.h"

namespace velquinctl {
namespace {

using Words = std::vector<std::string>;

const std::string kLong(10'000, 'x');

/// Every command with the least that it needs.
const std::map<std::string, Words> kCommands = {
    {"check", {"m"}},
    {"status", {"m"}},
    {"monitor", {"m"}},
    {"goto", {"m", "5h", "10"}},
    {"sync", {"m", "5h", "10"}},
    {"stop", {"m"}},
    {"home", {"m"}},
    {"park", {"m"}},
    {"unpark", {"m"}},
    {"slew", {"m", "north"}},
    {"pulse", {"m", "--north", "10"}},
    {"guide-speed", {"m", "0.5", "0.5"}},
    {"site", {"m", "--latitude", "35", "--longitude", "135"}},
    {"align-reset", {"m"}},
    {"ini", {"m", "mount.ini", "Mount"}},
    {"dialog", {"m"}},
    {"run", {"evening.txt"}},
};

/// Options that take a number, and a command that has them.
const std::map<std::string, std::string> kNumberOptions = {
    {"--timeout", "status"}, {"--interval", "monitor"}, {"--tolerance", "goto"},
    {"--speed", "slew"},     {"--for", "slew"},         {"--north", "pulse"},
    {"--south", "pulse"},    {"--east", "pulse"},       {"--west", "pulse"},
    {"--rate-ra", "pulse"},  {"--rate-dec", "pulse"},   {"--latitude", "site"},
    {"--longitude", "site"}, {"--zone", "site"},
};

const Words kNoNumbers = {
    " ",   "nan",  "-nan", "inf",  "-inf",     "0x10",  "1,5",    "1 2",   "1.5.2",
    "--",  "-",    "5h",   "e5",   "1e",       "1e999", "-1e308", "1e308", "99999999999999999999",
    kLong, "%s%n", "\n",   "a\nb", "\x1B[31m", "\xFF",  "--json"};

Words Line(const std::string& command, Words more = {}) {
  Words words = {command};
  const Words& least = kCommands.at(command);
  words.insert(words.end(), least.begin(), least.end());
  words.insert(words.end(), more.begin(), more.end());
  return words;
}

void ExpectTaken(const Words& words) {
  EXPECT_NO_THROW(ParseCommandLine(words, {})) << testing::PrintToString(words);
}

/// One line of a length that one can read.
/// @param names one of which it must have: the command, or what was wrong with it
void ExpectRefused(const Words& words, const Words& names) {
  const std::string shown = testing::PrintToString(words).substr(0, 200);
  try {
    ParseCommandLine(words, {});
    ADD_FAILURE() << "taken: " << shown;
  } catch (const Failure& failure) {
    const std::string line = ErrorLine(std::string("velquinctl: ") + failure.what());
    EXPECT_EQ(failure.Code(), ExitCode::kWrongUsage);
    EXPECT_LE(line.size(), 820u) << shown;
    EXPECT_TRUE(std::none_of(line.begin(), line.end(),
                             [](unsigned char c) { return c < ' ' || c == 0x7F; }))
        << "a second line, or what a terminal obeys: " << line;
    EXPECT_TRUE(std::any_of(
        names.begin(), names.end(),
        [&line](const std::string& name) { return line.find(name) != std::string::npos; }))
        << line << "\nnames none of " << testing::PrintToString(names) << ", of " << shown;
  } catch (const std::exception& other) {
    ADD_FAILURE() << other.what() << ": " << shown;
  }
}

TEST(WrongArguments, TheLeastThatACommandNeedsIsTakenAndLessIsNot) {
  for (const auto& [command, least] : kCommands) {
    ExpectTaken(Line(command));
    for (size_t count = 0; count < least.size(); ++count) {
      Words words = {command};
      words.insert(words.end(), least.begin(), least.begin() + static_cast<ptrdiff_t>(count));
      ExpectRefused(words, {command});
    }
  }
}

TEST(WrongArguments, AWordTooManyIsRefused) {
  for (const auto& [command, least] : kCommands) {
    if (command == "dialog") continue;  // takes a target
    for (const std::string& word : {std::string("word"), std::string(), kLong, std::string("5")}) {
      const Words words = Line(command, {word});
      const std::string empty = "argument " + std::to_string(words.size()) + " is empty";
      ExpectRefused(words, {word.empty() ? empty : command + ": "});
    }
  }
  ExpectRefused({"dialog", "m", "5h"}, {"DEC"});
  ExpectRefused({"dialog", "m", "5h", "10", "20"}, {"dialog: "});
}

TEST(WrongArguments, AnOptionThatIsNoneIsRefused) {
  for (const auto& [command, least] : kCommands) {
    for (const char* option : {"--bogus", "-x", "--bogus=5", "--JSON", "--time", "--for=-"}) {
      ExpectRefused(Line(command, {option}), {std::string(option, std::strcspn(option, "="))});
    }
  }
}

TEST(WrongArguments, AnOptionWithoutItsValueIsRefused) {
  for (const auto& [option, command] : kNumberOptions) {
    ExpectRefused(Line(command, {option}), {option});
  }
  for (const char* option : {"--library", "--name", "--log-path", "--log-prefix", "--progress"}) {
    ExpectRefused(Line("status", {option}), {option});
  }
  ExpectRefused(Line("site", {"--time"}), {"--time"});
}

TEST(WrongArguments, AnEmptyTextIsRefused) {
  for (const auto& [option, command] : kNumberOptions) {
    ExpectRefused(Line(command, {option, ""}), {option});
    ExpectRefused(Line(command, {option + "="}), {option});
  }
  for (const char* option : {"--library", "--name", "--log-path", "--log-prefix", "--progress"}) {
    ExpectRefused(Line("status", {option, ""}), {option});
    ExpectRefused({option, "", "status", "m"}, {option});
    ExpectRefused(Line("status", {std::string(option) + "="}), {option});
  }
  ExpectRefused(Line("site", {"--time", ""}), {"--time"});
  ExpectRefused({"dialog", "m", "", ""}, {"argument 3 "});
  ExpectRefused({"ini", "m", "", "Mount"}, {"argument 3 "});
  ExpectRefused({"ini", "m", "mount.ini", ""}, {"argument 4 "});
}

TEST(WrongArguments, AnOptionIsNoTextOfTheOneBeforeIt) {
  for (const char* option : {"--library", "--name", "--log-path", "--log-prefix", "--progress"}) {
    ExpectTaken(Line("status", {option, "auto"}));
    ExpectRefused(Line("status", {option, "--json"}), {option});
  }
}

TEST(WrongArguments, AFlagTakesNoValue) {
  for (const char* flag : {"--json", "--quiet", "--show-messages", "--watch", "--help"}) {
    for (const char* value : {"=", "=010", "=1", "=true", "=false", "=maybe"}) {
      ExpectRefused(Line("status", {std::string(flag) + value}), {flag});
    }
  }
}

TEST(WrongArguments, ANumberWithLeadingZerosIsDecimal) {
  const auto slew = ParseCommandLine({"slew", "m", "north", "--speed", "007", "--for", "010"}, {});
  const auto& move = std::get<SlewAction>(std::get<Request>(slew).action);
  EXPECT_EQ(move.speed, 7);
  EXPECT_EQ(move.forSeconds, 10.0);
  ExpectRefused({"slew", "m", "north", "--speed", "011"}, {"--speed"});
  const auto pulse = ParseCommandLine({"pulse", "m", "--north", "0100"}, {});
  EXPECT_EQ(std::get<PulseAction>(std::get<Request>(pulse).action).lengthsMs[0], 100);
}

TEST(WrongArguments, AnOptionGivenTwiceIsRefused) {
  for (const auto& [option, command] : kNumberOptions) {
    ExpectRefused(Line(command, {option, "5", option, "5"}), {option});
  }
  for (const char* option : {"--library", "--name", "--log-path", "--log-prefix", "--progress"}) {
    ExpectRefused(Line("status", {option, "auto", option, "auto"}), {option});
  }
  const char* const time = "2026-11-21T12:00";
  ExpectTaken(Line("site", {"--time", time}));
  ExpectRefused(Line("site", {"--time", time, "--time", time}), {"--time"});
}

TEST(WrongArguments, WhatIsNoNumberIsRefused) {
  for (const auto& [option, command] : kNumberOptions) {
    for (const std::string& text : kNoNumbers) {
      ExpectRefused(Line(command, {option + "=" + text}), {option});
    }
  }
  for (const std::string& text : kNoNumbers) {
    ExpectRefused({"guide-speed", "m", text, "0.5"}, {"RA: ", "DEC is required", "unknown option"});
    ExpectRefused({"guide-speed", "m", "0.5", text},
                  {"DEC: ", "DEC is required", "unknown option"});
  }
}

TEST(WrongArguments, ASlewThatIsOverBeforeTheDriverSendsItIsRefused) {
  ExpectRefused({"slew", "m", "north", "--for", "0.05"}, {"--for must be at least 0.2 seconds"});
}

TEST(WrongArguments, ANumberOutOfItsRangeIsRefused) {
  const std::vector<std::pair<std::string, Words>> ranges = {
      {"--timeout", {"0", "-1", "604801"}}, {"--interval", {"0", "0.09", "3600.1", "-1"}},
      {"--tolerance", {"0", "36001"}},      {"--speed", {"-1", "10", "1.5"}},
      {"--for", {"0", "-1", "604801"}},     {"--north", {"-1", "60001", "0.5"}},
      {"--south", {"-1", "60001", "0.5"}},  {"--east", {"-1", "60001", "0.5"}},
      {"--west", {"-1", "60001", "0.5"}},   {"--rate-ra", {"200.1", "-200.1"}},
      {"--rate-dec", {"200.1", "-200.1"}},  {"--latitude", {"90.1", "-90.1"}},
      {"--longitude", {"360.1", "-180.1"}}, {"--zone", {"14.1", "-14.1"}},
  };
  for (const auto& [option, values] : ranges) {
    for (const std::string& value : values) {
      ExpectRefused(Line(kNumberOptions.at(option), {option, value}), {option});
    }
  }
}

TEST(WrongArguments, WhatIsNoPositionIsRefused) {
  for (const std::string& text : kNoNumbers) {
    if (text == "5h" || text == "1 2") continue;  // one hour, two minutes
    ExpectRefused({"goto", "m", text, "10"}, {"right ascension", "goto: "});
    ExpectRefused({"goto", "m", "5h", text}, {"declination", "goto: "});
    ExpectRefused({"sync", "m", text, "10"}, {"right ascension", "sync: "});
    ExpectRefused({"dialog", "m", "5h", text}, {"declination", "DEC", "dialog: "});
  }
  for (const char* ra : {"24h", "-1h", "5h60m", "5h10m60s", "5:60:00", "360", "-0.1", "h"}) {
    ExpectRefused({"goto", "m", ra, "10"}, {"right ascension"});
  }
  for (const char* dec : {"90.1", "-90.1", "+91d", "10d60m", "10:00:60", "5h", "d"}) {
    ExpectRefused({"goto", "m", "5h", dec}, {"declination"});
  }
}

TEST(WrongArguments, WhatIsNoAddressIsRefused) {
  for (const std::string& text :
       {std::string(), std::string(" "), std::string("a b"), std::string("a\nb"),
        std::string("\x1B[31m"), std::string("127.0.0.1:60023"), std::string("::1")}) {
    for (const auto& [command, least] : kCommands) {
      if (command == "run") continue;
      Words words = Line(command);
      words[1] = text;
      ExpectRefused(words, {text.empty() ? "argument 2 is empty" : "is not an address",
                            "is not a valid mount address"});
    }
  }
}

TEST(WrongArguments, ATextThatNoFileNameMayHaveIsRefused) {
  for (const char* prefix : {"a/b", "a\\b", "a\nb", "\x1B[31m", ":"})
    ExpectRefused(Line("status", {"--log-prefix", prefix}), {"--log-prefix: "});
}

TEST(WrongArguments, WhatIsNoneOfAFewWordsIsRefused) {
  for (const std::string& text : {std::string(), std::string("North"), std::string("n"), kLong}) {
    ExpectRefused({"slew", "m", text},
                  {text.empty() ? "argument 3 is empty" : "is not a direction"});
    ExpectRefused(Line("status", {"--progress=" + (text.empty() ? "x" : text)}), {"--progress: "});
  }
  for (const char* text : {"yesterday", "2026-13-01T00:00", "2026-11-21", "24:00"}) {
    ExpectRefused(Line("site", {"--time", text}), {"--time: "});
  }
}

}  // namespace
}  // namespace velquinctl
