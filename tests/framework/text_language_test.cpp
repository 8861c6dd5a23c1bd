// SPDX-License-Identifier: MIT
// Which language the library speaks, and that every text of the one exists in the other.
#include "framework/base/text_language.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

#include "platform/user_notice.h"
#include "res/resource_ids.h"

namespace {

using testing::Each;
using testing::SizeIs;
using enum TextLanguage;

constexpr unsigned kTitle = 57344;
#define VELQUIN_STRING(id, text) id,
constexpr unsigned kAllTexts[] = {
#include "res/strings.inc"
};
#undef VELQUIN_STRING
// Those with an English text of their own: all but the title.
constexpr unsigned kTexts[] = {101, 102, 10001, 10002, 10003, 10004};

std::string Loaded(unsigned id) {
  char text[512];
  const int length = platform::LoadStringResource(id, text, sizeof text);
  return std::string(text, static_cast<size_t>(length));
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines(1);
  for (const char c : text) {
    if (c == '\n') {
      lines.emplace_back();
    } else {
      lines.back() += c;
    }
  }
  return lines;
}

}  // namespace

TEST(TextLanguage, IsJapaneseInTheJapaneseCodePageWhateverTheUserReads) {
  EXPECT_EQ(ChooseTextLanguage(932, true), kJapanese);
  EXPECT_EQ(ChooseTextLanguage(932, false), kJapanese);
}

TEST(TextLanguage, IsTheUsersInUtf8) {
  EXPECT_EQ(ChooseTextLanguage(65001, true), kJapanese);
  EXPECT_EQ(ChooseTextLanguage(65001, false), kEnglish);
}

TEST(TextLanguage, IsEnglishInEveryOtherCodePage) {
  for (const uint32_t codePage :
       {0u, 437u, 874u, 936u, 949u, 950u, 1250u, 1251u, 1252u, 1254u, 1361u, 20932u, 65000u}) {
    EXPECT_EQ(ChooseTextLanguage(codePage, true), kEnglish) << codePage;
    EXPECT_EQ(ChooseTextLanguage(codePage, false), kEnglish) << codePage;
  }
}

TEST(TextLanguage, IsJapaneseWhereTheseTestsRun) {
  EXPECT_EQ(AfxTextLanguage(), kJapanese);
  EXPECT_EQ(AfxTextResource(10002), 10002u);
}

TEST(TextLanguage, JapaneseResourcesHaveTheKnownNumbers) {
  for (const unsigned id : {101u, 10004u, 1000u, 3002u, 8001u, kTitle})
    EXPECT_EQ(TextResourceIn(kJapanese, id), id);
}

TEST(TextLanguage, EnglishResourcesHaveNumbersOfTheirOwn) {
  EXPECT_EQ(TextResourceIn(kEnglish, 101), 20101u);
  EXPECT_EQ(TextResourceIn(kEnglish, 10004), 30004u);
  EXPECT_EQ(TextResourceIn(kEnglish, IDD_DETAIL), 21000u);
  EXPECT_EQ(TextResourceIn(kEnglish, IDD_CONTROLLER), 23002u);
  EXPECT_EQ(TextResourceIn(kEnglish, IDD_MESSAGE_BOX), 28001u);
}

TEST(TextLanguage, TheTitleServesBoth) {
  EXPECT_EQ(TextResourceIn(kEnglish, kTitle), kTitle);
}

// A text whose number is shifted is looked for there and nowhere else.
TEST(TextLanguage, EveryTextExistsInBoth) {
  for (const unsigned id : kAllTexts) {
    EXPECT_NE(Loaded(TextResourceIn(kJapanese, id)), "") << id;
    EXPECT_NE(Loaded(TextResourceIn(kEnglish, id)), "") << id;
  }
}

TEST(EnglishTexts, SayWhatTheJapaneseOnesSay) {
  EXPECT_EQ(Loaded(20101), "Windows Sockets could not be started.");
  EXPECT_EQ(Loaded(20102), "Windows Sockets could not be started.");
  EXPECT_EQ(Loaded(30001),
            "The telescope does not answer.\nCheck the port settings, the cables and the power.");
  EXPECT_EQ(Loaded(30002), "The object is below the horizon.");
  EXPECT_EQ(Loaded(30003),
            "The command was not accepted.\nIf a goto is under way, try again when it is done.");
  EXPECT_EQ(Loaded(30004), "The mount will be synchronised on the target.");
}

// The message box would break longer lines at 192 dpi in the middle of a word.
TEST(EnglishTexts, HaveShortLinesOfAscii) {
  for (const unsigned id : kTexts) {
    const std::string text = Loaded(TextResourceIn(kEnglish, id));
    EXPECT_NE(text, "") << id;
    EXPECT_THAT(LinesOf(text), Each(SizeIs(testing::Le(50u)))) << id;
    EXPECT_TRUE(std::all_of(text.begin(), text.end(), [](char c) {
      return c == '\n' || (c >= ' ' && c <= '~');
    })) << text;
  }
}

TEST(EnglishTexts, BreakTheirLinesWhereTheJapaneseOnesDo) {
  for (const unsigned id : kTexts) {
    EXPECT_THAT(LinesOf(Loaded(TextResourceIn(kEnglish, id))), SizeIs(LinesOf(Loaded(id)).size()))
        << id;
  }
}
