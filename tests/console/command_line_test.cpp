// SPDX-License-Identifier: MIT
// From words to requests, and from wrong words to one line that helps.
#include "console/command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/failure.h"
#include "tests/support/pattern.h"

namespace velquinctl {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Words = std::vector<std::string>;

Request Parse(const Words& words, const CommonOptions& defaults = {}) {
  return std::get<Request>(ParseCommandLine(words, defaults));
}

template <typename ActionType>
ActionType ParseAs(const Words& words) {
  return std::get<ActionType>(Parse(words).action);
}

/// @return what is said about wrong words; empty when they are taken.
std::string Complaint(const Words& words) {
  try {
    ParseCommandLine(words, {});
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Code(), ExitCode::kWrongUsage);
    EXPECT_EQ(std::string(failure.what()).find('\n'), std::string::npos) << failure.what();
    return failure.what();
  }
  return {};
}

std::string Help(const Words& words) {
  return std::get<HelpText>(ParseCommandLine(words, {})).text;
}

TEST(CommandLine, AGotoHasAddressAndTarget) {
  const Request request = Parse({"goto", "10.0.0.7", "5h34m31.9s", "+22d00m52s"});
  EXPECT_EQ(request.command, "goto");
  EXPECT_EQ(request.address, "10.0.0.7");
  const auto action = std::get<GotoAction>(request.action);
  EXPECT_NEAR(action.target.raDegrees, 83.6329167, 1e-6);
  EXPECT_NEAR(action.target.decDegrees, 22.0144444, 1e-6);
  EXPECT_NEAR(action.toleranceDegrees, 60 / 3600.0, 1e-12);
}

TEST(CommandLine, ANegativeDeclinationIsNoOption) {
  const std::vector<Words> ways = {
      {"goto", "m", "5h", "-5:12:00"},
      {"goto", "m", "5h", "--", "-5.2"},
      {"goto", "m", "5h", "-5.2"},
      {"goto", "m", "5h", "-5d12m00s"},
      {"goto", "m", "5h", "\u22125.2"},
      {"goto", "m", "--json", "5h", "-5.2"},
      {"goto", "m", "5h", "-5.2", "--timeout", "9"},
  };
  for (const Words& words : ways) {
    EXPECT_NEAR(ParseAs<GotoAction>(words).target.decDegrees, -5.2, 1e-9)
        << testing::PrintToString(words);
  }
  EXPECT_NEAR(ParseAs<SyncAction>({"sync", "m", "5h", "-.5"}).target.decDegrees, -0.5, 1e-12);
}

TEST(CommandLine, OptionsMayStandBeforeAndAfterTheCommand) {
  for (const Words& words :
       {Words{"--json", "--timeout", "12.5", "--progress", "live", "--name", "East pier",
              "--library", "x.dll", "--log-path", "C:\\logs", "--log-prefix", "p", "status", "m"},
        Words{"status", "m", "--json", "--timeout=12.5", "--progress", "live", "--name",
              "East pier", "--library", "x.dll", "--log-path", "C:\\logs", "--log-prefix", "p"}}) {
    const CommonOptions options = Parse(words).options;
    EXPECT_TRUE(options.json);
    EXPECT_FALSE(options.quiet);
    EXPECT_EQ(options.timeoutSeconds, 12.5);
    EXPECT_EQ(options.progress, ProgressMode::kLive);
    EXPECT_EQ(options.name, "East pier");
    EXPECT_EQ(options.library, "x.dll");
    EXPECT_EQ(options.logPath, "C:\\logs");
    EXPECT_EQ(options.logPrefix, "p");
  }
}

TEST(CommandLine, WhatIsNotSaidComesFromTheDefaults) {
  CommonOptions defaults;
  defaults.json = true;
  defaults.library = "other.dll";
  defaults.timeoutSeconds = 7.0;
  const CommonOptions options = Parse({"status", "m", "--timeout", "9"}, defaults).options;
  EXPECT_TRUE(options.json);
  EXPECT_EQ(options.library, "other.dll");
  EXPECT_EQ(options.timeoutSeconds, 9.0);
}

TEST(CommandLine, SlewsAndPulsesHaveTheirNumbers) {
  const auto slew = ParseAs<SlewAction>({"slew", "m", "west", "--speed", "9", "--for", "2.5"});
  EXPECT_EQ(slew.direction, 4);
  EXPECT_EQ(slew.speed, 9);
  EXPECT_EQ(slew.forSeconds, 2.5);
  EXPECT_EQ(ParseAs<SlewAction>({"slew", "m", "north"}).forSeconds, 1.0);

  const auto pulse = ParseAs<PulseAction>(
      {"pulse", "m", "--south", "500", "--east", "20", "--rate-ra", "-0.5", "--rate-dec", "2"});
  EXPECT_THAT(pulse.lengthsMs, testing::ElementsAre(0, 500, 20, 0));
  EXPECT_EQ(pulse.rateRa, -0.5);
  EXPECT_EQ(pulse.rateDec, 2.0);

  const auto guide = ParseAs<GuideSpeedAction>({"guide-speed", "m", "0.5", "0.75"});
  EXPECT_EQ(guide.rateRa, 0.5);
  EXPECT_EQ(guide.rateDec, 0.75);
}

TEST(CommandLine, ASiteHasItsSigns) {
  const auto site =
      ParseAs<SiteAction>({"site", "m", "--latitude", "-35.5", "--longitude", "-70.25", "--zone",
                           "-4", "--time", "2026-11-21T22:30:00"});
  EXPECT_EQ(site.location.latitude, -35.5);
  EXPECT_EQ(site.location.longitude, -70.25);
  EXPECT_EQ(site.zoneHours, -4.0);
  EXPECT_EQ(site.localTime->hour, 22);
  EXPECT_FALSE(ParseAs<SiteAction>({"site", "m", "--latitude", "1", "--longitude", "2"}).zoneHours);
}

TEST(CommandLine, FileNamesThatLookLikeNumbersStayFileNames) {
  const auto ini = ParseAs<IniAction>({"ini", "m", "-5.ini", "Mount"});
  EXPECT_EQ(ini.file, "-5.ini");
  EXPECT_EQ(ini.section, "Mount");
  EXPECT_EQ(ParseAs<RunAction>({"run", "/slash/park"}).file, "/slash/park");
  EXPECT_EQ(ParseAs<RunAction>({"run", "park"}).file, "park");
}

TEST(CommandLine, HelpIsThereForEveryCommandWithExamples) {
  const std::string all = Help({"--help"});
  for (const char* command :
       {"check", "status", "monitor", "goto", "sync", "stop", "home", "park", "unpark", "slew",
        "pulse", "guide-speed", "site", "dialog", "align-reset", "ini", "run", "help"}) {
    EXPECT_THAT(all, HasSubstr(std::string("  ") + command + " "));
    const std::string help = Help({command, "--help"});
    EXPECT_THAT(help, HasSubstr("Examples:\n  velquinctl " + std::string(command)));
    EXPECT_THAT(help, HasSubstr("Usage: velquinctl " + std::string(command)));
  }
  for (const char* code : {"  0 ", "  1 ", "  2 ", "  3 ", "  130 "})
    EXPECT_THAT(all, HasSubstr(code));
}

TEST(CommandLine, VersionIsTold) {
  EXPECT_TRUE(FitsPattern(Help({"--version"}), "velquinctl [0-9.]+\n"));
}

TEST(CommandLine, WrongWordsAreNamed) {
  EXPECT_THAT(Complaint({}), HasSubstr("no command given"));
  EXPECT_THAT(Complaint({"got", "m"}), HasSubstr("unknown command \"got\""));
  EXPECT_THAT(Complaint({"--foo"}), HasSubstr("unknown option \"--foo\""));
  EXPECT_THAT(Complaint({"goto", "m", "5h"}), HasSubstr("DEC is required"));
  EXPECT_THAT(Complaint({"goto", "m", "5h", "2", "3"}), HasSubstr("unexpected argument \"3\""));
  EXPECT_THAT(Complaint({"goto", "m", "5h", "2", "--foo"}), HasSubstr("unknown option \"--foo\""));
  EXPECT_THAT(Complaint({"status", "m", "--timeout"}), HasSubstr("--timeout needs a value"));
  EXPECT_THAT(Complaint({"park"}), HasSubstr("ADDRESS is required"));
  EXPECT_THAT(Complaint({"status", "a b"}), HasSubstr("is not an address"));
}

TEST(CommandLine, UnexpectedArgumentsAreListedInTheirOrder) {
  EXPECT_THAT(Complaint({"goto", "m", "5h", "2", "first", "-3", "third"}),
              HasSubstr("unexpected arguments \"first\" \"-3\" \"third\""));
}

TEST(CommandLine, AnUnknownOptionIsNamedBeforeWhatIsMissing) {
  EXPECT_THAT(Complaint({"goto", "--hlp"}),
              AllOf(HasSubstr("unknown option \"--hlp\""), HasSubstr("did you mean --help?")));
  EXPECT_THAT(Complaint({"--hlp"}),
              AllOf(HasSubstr("unknown option \"--hlp\""), HasSubstr("did you mean --help?")));
  EXPECT_THAT(Complaint({"site", "m", "--lattitude", "35", "--longitude", "139"}),
              AllOf(HasSubstr("\"--lattitude\""), HasSubstr("did you mean --latitude?")));
  EXPECT_THAT(Complaint({"status", "m", "--tmeout=5"}),
              AllOf(HasSubstr("\"--tmeout=5\""), HasSubstr("did you mean --timeout?")));
  EXPECT_THAT(Complaint({"status", "--bogus"}), Not(HasSubstr("did you mean")));
}

TEST(CommandLine, AMistypedCommandIsCorrected) {
  EXPECT_THAT(Complaint({"got", "m"}), HasSubstr("did you mean goto?"));
  EXPECT_THAT(Complaint({"staus", "m"}), HasSubstr("did you mean status?"));
  EXPECT_THAT(Complaint({"telescope", "m"}), Not(HasSubstr("did you mean")));
}

TEST(CommandLine, AForgottenAddressIsMissedFirst) {
  const char* const first = "the first argument must be the mount's address, and ";
  for (const Words& words :
       {Words{"goto", "5h34m31.9s", "+22d00m52s"}, Words{"goto", "83.633", "-5.39"},
        Words{"sync", "05:34:31.9", "22"}, Words{"dialog", "5h34m31.9s", "+22d00m52s"},
        Words{"slew", "north"}, Words{"guide-speed", "0.5", "0.75"}, Words{"goto", "-5.5", "3"},
        Words{"status", "5h34m31.9s"}, Words{"goto", "5h34m31.9s", "+22d00m52s", "60"}}) {
    EXPECT_THAT(Complaint(words), HasSubstr(first + ('"' + words[1] + "\" is not one")))
        << testing::PrintToString(words);
  }
  for (const char* host : {"127.1", "10.0.0.7", "east-pier", "north", "mount5"})
    EXPECT_EQ(Parse({"status", host}).address, host);
}

TEST(CommandLine, HelpIsACommandToo) {
  EXPECT_EQ(Help({"help"}), Help({"--help"}));
  EXPECT_EQ(Help({"help", "goto"}), Help({"goto", "--help"}));
  EXPECT_EQ(Help({"help", "guide-speed"}), Help({"guide-speed", "--help"}));
  EXPECT_EQ(Help({"--quiet", "help", "run"}), Help({"run", "--help"}));
  EXPECT_THAT(Complaint({"help", "got"}),
              AllOf(HasSubstr("unknown command \"got\""), HasSubstr("did you mean goto?")));
  EXPECT_THAT(Complaint({"help", "goto", "park"}), HasSubstr("unexpected argument \"park\""));
}

TEST(CommandLine, AnEmptyArgumentIsNamedByItsPlace) {
  EXPECT_THAT(Complaint({"run", ""}), HasSubstr("argument 2 is empty"));
  EXPECT_THAT(Complaint({"status", ""}), HasSubstr("argument 2 is empty"));
  EXPECT_THAT(Complaint({""}), HasSubstr("argument 1 is empty"));
  EXPECT_THAT(Complaint({"status", "m", "--json", ""}), HasSubstr("argument 4 is empty"));
  EXPECT_THAT(Complaint({"status", "m", "--timeout=5", ""}), HasSubstr("argument 4 is empty"));
  EXPECT_EQ(Complaint({"status", "m", "--timeout", ""}), "--timeout needs a value");
}

TEST(CommandLine, TheJournalsPrefixIsPartOfAFileName) {
  for (const char* prefix : {"a/b", "a\\b", "C:", "a*", "what?", "\"q\"", "<", ">", "|"}) {
    EXPECT_THAT(Complaint({"status", "m", "--log-prefix", prefix}),
                AllOf(HasSubstr("--log-prefix: "), HasSubstr("cannot be part of a file name")))
        << prefix;
  }
  EXPECT_EQ(Parse({"status", "m", "--log-prefix", "\u6771 pier-2.a"}).options.logPrefix,
            "\u6771 pier-2.a");
}

TEST(CommandLine, WrongValuesAreNamed) {
  EXPECT_THAT(Complaint({"goto", "m", "25h", "2"}), HasSubstr("\"25h\""));
  EXPECT_THAT(Complaint({"goto", "m", "5h", "-91"}), HasSubstr("\"-91\""));
  EXPECT_THAT(Complaint({"goto", "m", "5h", "1", "--tolerance", "0"}), HasSubstr("--tolerance"));
  EXPECT_THAT(Complaint({"slew", "m", "up"}), HasSubstr("\"up\""));
  EXPECT_THAT(Complaint({"slew", "m", "north", "--speed", "10"}), HasSubstr("--speed"));
  EXPECT_THAT(Complaint({"slew", "m", "north", "--speed", "-1"}), HasSubstr("--speed"));
  EXPECT_THAT(Complaint({"slew", "m", "north", "--for", "0"}), HasSubstr("--for"));
  EXPECT_THAT(Complaint({"pulse", "m"}), HasSubstr("--north"));
  EXPECT_THAT(Complaint({"pulse", "m", "--north", "-5"}), HasSubstr("--north"));
  EXPECT_THAT(Complaint({"pulse", "m", "--north", "1.5"}), HasSubstr("whole"));
  EXPECT_THAT(Complaint({"pulse", "m", "--north", "60001"}), HasSubstr("60000"));
  EXPECT_THAT(Complaint({"site", "m", "--latitude", "91", "--longitude", "0"}),
              HasSubstr("--latitude"));
  EXPECT_THAT(Complaint({"site", "m", "--latitude", "1"}), HasSubstr("--longitude"));
  EXPECT_THAT(Complaint({"site", "m", "--latitude", "1", "--longitude", "1", "--time", "noon"}),
              HasSubstr("\"noon\""));
  EXPECT_THAT(Complaint({"status", "m", "--timeout", "soon"}), HasSubstr("\"soon\""));
  for (const char* timeout : {"-3", "0", "604801"}) {
    EXPECT_EQ(Complaint({"status", "m", "--timeout", timeout}),
              std::string("--timeout: ") + timeout +
                  " is out of range (greater than 0, at most 604800 seconds)");
  }
  EXPECT_THAT(Complaint({"status", "m", "--progress", "loud"}), HasSubstr("\"loud\""));
  EXPECT_THAT(Complaint({"status", "m", "--for", "3"}), HasSubstr("--watch"));
}

}  // namespace
}  // namespace velquinctl
