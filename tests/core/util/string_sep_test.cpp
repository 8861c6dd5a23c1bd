// SPDX-License-Identifier: MIT
#include "core/util/string_sep.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <random>
#include <string>
#include <vector>

#include "tests/core/util/scarce_memory.h"
#include "tests/framework/comma_locale.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Fields = std::vector<std::string>;

Fields FieldsOf(CStringSep& line) {
  Fields fields;
  for (int32_t i = 0; i < line.GetCount(); ++i) fields.push_back(line.GetParam(i).GetString());
  return fields;
}

Fields Split(const char* text, const char* separator) {
  CStringSep line;
  line.Set(text, separator, 0);
  return FieldsOf(line);
}

std::string Trimmed(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t\n\v\f\r");
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(" \t\n\v\f\r") - first + 1);
}

// The rule written down a second time, with the text cut shorter and shorter.
Fields SplitByTheRule(std::string text, std::string separator) {
  Fields fields;
  if (text.empty()) return fields;
  if (separator.empty()) separator = ",";
  for (;;) {
    const size_t found = text.find(separator);
    if (found == std::string::npos) {
      fields.push_back(Trimmed(text));
      return fields;
    }
    fields.push_back(Trimmed(text.substr(0, found)));
    if (found + 1 >= text.size()) return fields;
    text = text.substr(found + 1);
  }
}

std::string RandomText(std::mt19937& random, const std::string& characters, size_t maxLength) {
  std::string text(random() % (maxLength + 1), ' ');
  for (char& c : text) c = characters[random() % characters.size()];
  return text;
}

class ThreeFields : public testing::Test {
 protected:
  ThreeFields() { line.Set("abc,12,-2.5kg", ",", 0); }

  CStringSep line;
};

}  // namespace

TEST(StringSep, HasNoFieldsAtFirst) {
  CStringSep line;
  EXPECT_EQ(line.GetCount(), 0);
  EXPECT_EQ(line.GetParam(0), "");
}

TEST(StringSep, MakesNoFieldOfAnEmptyText) {
  CStringSep line;
  line.Set("", ",", 0);
  EXPECT_EQ(line.GetCount(), 0);
  EXPECT_EQ(line.GetParam(0), "");
  EXPECT_EQ(line.atoi(0, 7), 7);
  EXPECT_EQ(line.Same(0, ""), 0);
}

TEST(StringSep, SeparatesAtCommasWhenNoSeparatorIsGiven) {
  EXPECT_THAT(Split("1, 2.5 ,abc", ""), ElementsAre("1", "2.5", "abc"));
}

TEST(StringSep, KeepsAnEmptyFieldInside) {
  EXPECT_THAT(Split("a,,b", ","), ElementsAre("a", "", "b"));
  EXPECT_THAT(Split(",a", ","), ElementsAre("", "a"));
  EXPECT_THAT(Split("a,,", ","), ElementsAre("a", ""));
}

TEST(StringSep, MakesNoFieldAfterASeparatorAtTheEnd) {
  EXPECT_THAT(Split("a,b,", ","), ElementsAre("a", "b"));
  EXPECT_THAT(Split(",", ","), ElementsAre(""));
}

TEST(StringSep, KeepsAFieldOfWhiteSpaceAtTheEnd) {
  EXPECT_THAT(Split("a, ", ","), ElementsAre("a", ""));
  EXPECT_THAT(Split(" ", ","), ElementsAre(""));
}

TEST(StringSep, SkipsOneCharacterOfALongSeparator) {
  EXPECT_THAT(Split("a::b", "::"), ElementsAre("a", ":b"));
  EXPECT_THAT(Split("a:::b", "::"), ElementsAre("a", "", ":b"));
  EXPECT_THAT(Split("a:b", "::"), ElementsAre("a:b"));
  EXPECT_THAT(Split("a::", "::"), ElementsAre("a", ":"));
}

TEST(StringSep, TrimsWhatIsLeftOfACommaWithASpace) {
  EXPECT_THAT(Split("a, b", ", "), ElementsAre("a", "b"));
}

TEST(StringSep, TrimsEveryKindOfWhiteSpaceAndNothingElse) {
  EXPECT_THAT(Split(" \t\n\v\f\ra b\r\f\v\n\t ,\x01x\x7f", ","), ElementsAre("a b", "\x01x\x7f"));
  EXPECT_THAT(Split("\xA0x\xA0", ","), ElementsAre("\xA0x\xA0"));
}

TEST(StringSep, IgnoresTheFlags) {
  CStringSep line;
  line.Set("a,B", ",", 0xFFFFFFFFu);
  EXPECT_THAT(FieldsOf(line), ElementsAre("a", "B"));
}

TEST(StringSep, ReplacesAllEarlierFields) {
  CStringSep line;
  line.Set("a,b,c", ",", 0);
  line.Set("d", ",", 0);
  EXPECT_THAT(FieldsOf(line), ElementsAre("d"));
  line.Set("", ",", 0);
  EXPECT_THAT(FieldsOf(line), IsEmpty());
}

TEST(StringSep, TakesAsManyFieldsAsThereAre) {
  std::string text = "0";
  for (int i = 1; i < 5000; ++i) text += "," + std::to_string(i);
  CStringSep line;
  line.Set(text.c_str(), ",", 0);
  ASSERT_EQ(line.GetCount(), 5000);
  for (int i = 0; i < 5000; ++i) ASSERT_EQ(line.atoi(i, -1), i);
}

TEST(StringSep, HasNoFieldsWithoutMemoryForThem) {
  std::string text = "0";
  for (int i = 1; i < 5000; ++i) text += "," + std::to_string(i);
  const CString manyFields(text.c_str());
  CStringSep line;
  line.Set("a,b", ",", 0);
  {
    const ScarceMemory scarce(4096);
    EXPECT_NO_THROW(line.Set(manyFields, ",", 0));
  }
  EXPECT_EQ(line.GetCount(), 0);
  line.Set("c,d", ",", 0);
  EXPECT_THAT(FieldsOf(line), ElementsAre("c", "d"));
}

TEST(StringSep, SplitsAnyTextByTheSameRule) {
  std::mt19937 random(62);
  const char* const separators[] = {"", ",", ":", "::", ", ", ",a", "ab,"};
  for (int i = 0; i < 20000; ++i) {
    const std::string text = RandomText(random, ",: ab\t", 12);
    const char* separator = separators[random() % std::size(separators)];
    ASSERT_EQ(Split(text.c_str(), separator), SplitByTheRule(text, separator))
        << '"' << text << "\" at \"" << separator << '"';
  }
}

TEST_F(ThreeFields, GiveAnEmptyTextOutsideTheirRange) {
  EXPECT_EQ(line.GetParam(-1), "");
  EXPECT_EQ(line.GetParam(3), "");
  EXPECT_EQ(line.GetParam(INT32_MAX), "");
  EXPECT_EQ(line.GetParam(INT32_MIN), "");
  EXPECT_EQ(line.GetParam(2), "-2.5kg");
}

TEST_F(ThreeFields, GiveTheFallbackOutsideTheirRange) {
  EXPECT_EQ(line.atof(3, 1.5), 1.5);
  EXPECT_EQ(line.atof(-1, -0.5), -0.5);
  EXPECT_EQ(line.atoi(3, 42), 42);
  EXPECT_EQ(line.atoi(-1, 43), 43);
  EXPECT_EQ(line.atox(3, 44), 44);
  EXPECT_EQ(line.atox(-1, 45), 45);
}

TEST_F(ThreeFields, AreComparedWithoutRegardToCase) {
  EXPECT_EQ(line.Same(0, "ABC"), 1);
  EXPECT_EQ(line.Same(0, "abc"), 1);
  EXPECT_EQ(line.Same(0, "abcd"), 0);
  EXPECT_EQ(line.Same(0, "ab"), 0);
  EXPECT_EQ(line.Same(0, ""), 0);
  EXPECT_EQ(line.Same(5, "abc"), 0);
  EXPECT_EQ(line.Same(5, ""), 0);
  EXPECT_EQ(line.Same(-1, "abc"), 0);
}

TEST_F(ThreeFields, GiveTheNumbersTheyBeginWith) {
  EXPECT_EQ(line.atof(2, 9.0), -2.5);
  EXPECT_EQ(line.atoi(2, 9), -2);
  EXPECT_EQ(line.atof(0, 9.0), 0.0);
  EXPECT_EQ(line.atoi(0, 9), 0);
  EXPECT_EQ(line.atoi(1, 9), 12);
  EXPECT_EQ(line.atox(1, 9), 12);
}

TEST(StringSep, ReadsWordsAsZero) {
  CStringSep line;
  line.Set("inf,-infinity,nan,Nancy,0x1p3", ",", 0);
  for (int field = 0; field < 5; ++field) EXPECT_EQ(line.atof(field, 9.0), 0.0) << field;
}

TEST(StringSep, ReadsHexadecimalAsDecimal) {
  CStringSep line;
  line.Set("12,ff,1F,0x10", ",", 0);
  EXPECT_EQ(line.atox(0, 9), 12);
  EXPECT_EQ(line.atox(1, 9), 0);
  EXPECT_EQ(line.atox(2, 9), 1);
  EXPECT_EQ(line.atox(3, 9), 0);
}

TEST(StringSep, ReadsNumbersWithAPointInEveryLocale) {
  const CommaLocale german;
  CStringSep line;
  line.Set("5.25;5,25", ";", 0);
  EXPECT_EQ(line.atof(0, 9.0), 5.25);
  EXPECT_EQ(line.atof(1, 9.0), 5.0);
}

TEST(StringSep, LeavesTheCallersTextsAlone) {
  const CString text("a , b");
  const CString separator(",");
  CStringSep line;
  line.Set(text, separator, 0);
  line.GetParam(0) += "more";
  EXPECT_EQ(text, "a , b");
  EXPECT_EQ(separator, ",");
  EXPECT_EQ(line.GetParam(0), "a");
}

// Hosts make objects of this class in their own storage: a text, then an array of texts.
TEST(StringSepLayout, IsAnEmptyTextAndAnArrayOfTexts) {
  struct Contents {
    const char* text;
    void* arrayTable;
    const char** data;
    int64_t size;
    int64_t maxSize;
    int64_t growBy;
  };
  static_assert(sizeof(CStringSep) == sizeof(Contents));
  CStringSep line;
  line.Set("one,two", ",", 0);
  Contents contents;
  std::memcpy(&contents, static_cast<const void*>(&line), sizeof contents);
  EXPECT_EQ(contents.text, CString().GetString());
  EXPECT_NE(contents.arrayTable, nullptr);
  ASSERT_EQ(contents.size, 2);
  EXPECT_GE(contents.maxSize, 2);
  EXPECT_EQ(contents.growBy, 0);
  EXPECT_STREQ(contents.data[0], "one");
  EXPECT_STREQ(contents.data[1], "two");
}
