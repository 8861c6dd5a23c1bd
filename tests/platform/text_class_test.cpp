// SPDX-License-Identifier: MIT
#include "platform/text_class.h"

#include <gtest/gtest.h>

#include <string>

TEST(MultibyteAlnum, HoldsForAsciiLettersAndDigits) {
  const std::string alnum = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  for (int code = 0; code < 0x80; ++code) {
    const bool expected = alnum.find(static_cast<char>(code)) != std::string::npos;
    EXPECT_EQ(platform::IsMultibyteAlnum(code), expected) << code;
  }
}

// The bytes of Japanese texts arrive as negative numbers, and none of them counts.
TEST(MultibyteAlnum, DoesNotHoldForBytesAsSignedChars) {
  for (int byte = 0x80; byte <= 0xFF; ++byte) {
    const int code = static_cast<signed char>(byte);
    ASSERT_LT(code, 0);
    EXPECT_FALSE(platform::IsMultibyteAlnum(code)) << byte;
  }
}

TEST(TextCompare, OrdersWithoutRegardToCase) {
  EXPECT_EQ(platform::CompareTextNoCase("abcXYZ1", "ABCxyz1"), 0);
  EXPECT_LT(platform::CompareTextNoCase("abc", "ABD"), 0);
  EXPECT_GT(platform::CompareTextNoCase("ABD", "abc"), 0);
  EXPECT_LT(platform::CompareTextNoCase("", "a"), 0);
  EXPECT_EQ(platform::CompareTextNoCase("", ""), 0);
}

TEST(TextSearch, FindsTheFirstOccurrence) {
  const char* const text = "abcabc";
  EXPECT_EQ(platform::FindText(text, "bc"), text + 1);
  EXPECT_EQ(platform::FindText(text + 2, "bc"), text + 4);
  EXPECT_EQ(platform::FindText(text, "abcabc"), text);
  EXPECT_EQ(platform::FindText(text, ""), text);
  EXPECT_EQ(platform::FindText(text, "abcabca"), nullptr);
  EXPECT_EQ(platform::FindText(text, "B"), nullptr);
  EXPECT_EQ(platform::FindText("", "a"), nullptr);
}

#ifdef _WIN32

TEST(TextSearch, FindsWholeCharactersOnly) {
  const char* const text = "\x83\x41\x41\x83";  // a katakana, "A", half a character
  EXPECT_EQ(platform::FindText(text, "A"), text + 2);
  EXPECT_EQ(platform::FindText(text, "\x83\x41"), text);
  EXPECT_EQ(platform::FindText(text, "\x83"), text);
  EXPECT_EQ(platform::FindText(text + 2, "\x83"), text + 3);
  EXPECT_EQ(platform::FindText("\x83\x41", "A"), nullptr);
}

TEST(TextCompare, ComparesWholeCharacters) {
  EXPECT_NE(platform::CompareTextNoCase("\x83\x41", "\x83\x61"), 0);
  EXPECT_EQ(platform::CompareTextNoCase("a\x83\x41"
                                        "b",
                                        "A\x83\x41"
                                        "B"),
            0);
}

#endif
