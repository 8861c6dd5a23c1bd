// SPDX-License-Identifier: MIT
// Scripts: what a line may look like, and where a wrong one is found.
#include "console/script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/failure.h"

namespace velquinctl {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

std::vector<std::string> Words(std::string_view line) {
  std::vector<std::string> words;
  EXPECT_TRUE(SplitScriptLine(line, words)) << line;
  return words;
}

std::string Complaint(const std::string& content) {
  try {
    ParseScript(content, "evening.txt", {});
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Code(), ExitCode::kWrongUsage);
    return failure.what();
  }
  return {};
}

TEST(ScriptLine, IsSplitAtBlanks) {
  EXPECT_THAT(Words("goto m  5h\t-5.2 "), ElementsAre("goto", "m", "5h", "-5.2"));
  EXPECT_THAT(Words(""), IsEmpty());
}

TEST(ScriptLine, EndsAtAComment) {
  EXPECT_THAT(Words("park m # good night"), ElementsAre("park", "m"));
  EXPECT_THAT(Words("# park m"), IsEmpty());
  EXPECT_THAT(Words("ini m a#b.ini S"), ElementsAre("ini", "m", "a#b.ini", "S"));
}

TEST(ScriptLine, QuotesKeepBlanksAndCommentSigns) {
  EXPECT_THAT(Words("goto m \"5 34 31.9\" \"-5 12 0\""),
              ElementsAre("goto", "m", "5 34 31.9", "-5 12 0"));
  EXPECT_THAT(Words("status m --name=\"East # 2\""), ElementsAre("status", "m", "--name=East # 2"));
  EXPECT_THAT(Words("status m --name \"\""), ElementsAre("status", "m", "--name", ""));
}

TEST(ScriptLine, AQuoteBehindANumberIsASecondOfArc) {
  EXPECT_THAT(Words("goto m 5h +22d00'52\""), ElementsAre("goto", "m", "5h", "+22d00'52\""));
}

TEST(Script, KeepsTheLinesThatAskForSomething) {
  const auto lines = ParseScript(
      "\xEF\xBB\xBF# an evening\r\n\r\nunpark 10.0.0.7\r\n  goto 10.0.0.7 5h 20 --timeout 90\n\n"
      "park 10.0.0.7",
      "evening.txt", {});
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[0].number, 3);
  EXPECT_EQ(lines[0].text, "unpark 10.0.0.7");
  EXPECT_EQ(lines[1].number, 4);
  EXPECT_EQ(lines[1].request.command, "goto");
  EXPECT_EQ(lines[1].request.options.timeoutSeconds, 90.0);
  EXPECT_EQ(lines[2].number, 6);
  EXPECT_FALSE(lines[2].request.options.timeoutSeconds);
}

TEST(Script, MayBeInUtf16) {
  std::string content = "\xFF\xFE";
  for (const char c : std::string_view("# an evening\r\npark m\r\n")) content += {c, '\0'};
  const auto lines = ParseScript(content, "evening.txt", {});
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_EQ(lines[0].number, 2);
  EXPECT_EQ(lines[0].text, "park m");
}

TEST(Script, HasNoWordThatIsNotUtf8) {
  EXPECT_EQ(Complaint("park m\nstatus m --name \x96\x5D\n"),
            "evening.txt:2: not valid UTF-8 (save the file as UTF-8)");
  EXPECT_THAT(ParseScript("park m # \x96\x5D", "f", {}), testing::SizeIs(1)) << "a comment";
}

TEST(Script, LinesInheritTheOptionsOfTheRun) {
  CommonOptions options;
  options.json = true;
  EXPECT_TRUE(ParseScript("park m", "f", options)[0].request.options.json);
}

TEST(Script, MayBeEmpty) {
  EXPECT_THAT(ParseScript("", "f", {}), IsEmpty());
  EXPECT_THAT(ParseScript("# nothing\n\n", "f", {}), IsEmpty());
}

TEST(Script, TheFirstWrongLineIsNamed) {
  EXPECT_THAT(Complaint("park m\n\ngoto m 25h 2\nfoo\n"),
              testing::AllOf(StartsWith("evening.txt:3: "), HasSubstr("\"25h\"")));
  EXPECT_THAT(Complaint("foo bar"),
              testing::AllOf(StartsWith("evening.txt:1: "), HasSubstr("\"foo\"")));
  EXPECT_THAT(Complaint("status \"m"), StartsWith("evening.txt:1: unclosed quote"));
}

TEST(Script, NeitherHelpNorAnotherScriptHasAPlaceInIt) {
  EXPECT_THAT(Complaint("park m\npark --help"), StartsWith("evening.txt:2: "));
  EXPECT_THAT(Complaint("--version"), StartsWith("evening.txt:1: "));
  EXPECT_THAT(Complaint("run other.txt"), StartsWith("evening.txt:1: "));
}

}  // namespace
}  // namespace velquinctl
