// SPDX-License-Identifier: MIT
// Scripts as Windows' editors and shells save them.
#include "console/script_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "console/failure.h"

namespace velquinctl {
namespace {

using namespace std::string_view_literals;

// One to four bytes in UTF-8; the last one takes two units in UTF-16.
constexpr std::string_view kText = "park m\r\n# \u00FC\u671B\U0001F52D \u07FF\uFFFD\U0010FFFF\n";
constexpr std::u16string_view kUnits =
    u"park m\r\n# \u00FC\u671B\U0001F52D \u07FF\uFFFD\U0010FFFF\n";

std::string Bytes(std::u16string_view units, bool bigEndian) {
  std::string bytes;
  for (const char16_t unit : units) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  }
  return bytes;
}

std::string Complaint(std::string_view bytes) {
  try {
    ScriptText(bytes, "evening.txt");
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Code(), ExitCode::kWrongUsage);
    return failure.what();
  }
  return {};
}

TEST(ScriptText, IsUtf8WithOrWithoutAMark) {
  EXPECT_EQ(ScriptText(kText, "f"), kText);
  EXPECT_EQ(ScriptText("\xEF\xBB\xBF" + std::string(kText), "f"), kText);
  EXPECT_EQ(ScriptText("", "f"), "");
  EXPECT_EQ(ScriptText("\xEF\xBB\xBF", "f"), "");
}

TEST(ScriptText, IsUtf16OfEitherByteOrderWithAMark) {
  EXPECT_EQ(ScriptText("\xFF\xFE" + Bytes(kUnits, false), "f"), kText);
  EXPECT_EQ(ScriptText("\xFE\xFF" + Bytes(kUnits, true), "f"), kText);
  EXPECT_EQ(ScriptText("\xFF\xFE", "f"), "");
}

TEST(ScriptText, LosesNoHalfCharacter) {
  const std::string wrong = "evening.txt: not valid UTF-16 (save it as UTF-8)";
  for (const std::u16string& units :
       {std::u16string(u"a") + char16_t(0xD83D), std::u16string(1, char16_t(0xD83D)) + u"a",
        std::u16string(1, char16_t(0xDD2D)) + u"a", std::u16string(2, char16_t(0xD83D)),
        std::u16string{char16_t(0xD83D), char16_t(0xE000)}}) {
    EXPECT_EQ(Complaint("\xFF\xFE" + Bytes(units, false)), wrong);
    EXPECT_EQ(Complaint("\xFE\xFF" + Bytes(units, true)), wrong);
  }
  EXPECT_EQ(Complaint("\xFF\xFEp"sv), wrong);
  EXPECT_EQ(Complaint("\xFF\xFEp\0a"sv), wrong);
}

TEST(ScriptText, IsNoOtherFile) {
  const std::string wrong = "evening.txt: not a text file (save it as UTF-8)";
  EXPECT_EQ(Complaint("p\0a\0r\0k\0"sv), wrong);
  EXPECT_EQ(Complaint("\0p\0a\0r\0k"sv), wrong);
  EXPECT_EQ(Complaint("park m\n\0"sv), wrong);
  EXPECT_EQ(Complaint("\xFF\xFE\0\0p\0\0\0"sv), wrong) << "UTF-32";
}

TEST(Utf8, IsJudgedCharacterByCharacter) {
  EXPECT_TRUE(IsUtf8(kText));
  EXPECT_TRUE(IsUtf8(""));
  EXPECT_TRUE(IsUtf8("\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xF0\x90\x80\x80"));
  for (const std::string_view wrong :
       {"\x80"sv, "a\xBF"sv, "\xC3"sv, "\xC3\x28"sv, "\xE6\x9C"sv, "\xE6\x9C\x28"sv,
        "\xF0\x9F\x94"sv, "\xF8\x88\x80\x80"sv, "\xFF"sv, "\xC1\xBF"sv, "\xE0\x9F\xBF"sv,
        "\xF0\x8F\xBF\xBF"sv, "\xED\xA0\x80"sv, "\xED\xBF\xBF"sv, "\xF4\x90\x80\x80"sv,
        "\x96\x5D\x89\x93"sv}) {
    EXPECT_FALSE(IsUtf8(wrong)) << testing::PrintToString(wrong);
  }
}

}  // namespace
}  // namespace velquinctl
