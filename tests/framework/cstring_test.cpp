// SPDX-License-Identifier: MIT
#include "framework/base/cstring.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "framework/base/exceptions.h"

TEST(String, IsEmptyByDefault) {
  const CString string;
  EXPECT_TRUE(string.IsEmpty());
  EXPECT_EQ(string.GetLength(), 0);
  EXPECT_STREQ(string, "");
  EXPECT_STREQ(string.GetString(), "");
}

TEST(String, CopiesATextItIsMadeFrom) {
  char text[] = "abc";
  const CString string(text);
  text[0] = 'X';
  EXPECT_STREQ(string, "abc");
  EXPECT_EQ(string.GetLength(), 3);
  EXPECT_FALSE(string.IsEmpty());
}

TEST(String, TakesNullForEmpty) {
  const char* none = nullptr;
  EXPECT_TRUE(CString(none).IsEmpty());
  EXPECT_TRUE(CString(none, 5).IsEmpty());
  CString string("abc");
  string += none;
  string.Append(none, 5);
  EXPECT_STREQ(string, "abc");
  EXPECT_EQ(CString().Compare(none), 0);
  EXPECT_EQ(CString().CompareNoCase(none), 0);
  string = none;
  EXPECT_TRUE(string.IsEmpty());
}

TEST(String, TakesSoManyBytesOfAText) {
  EXPECT_STREQ(CString("abcdef", 3), "abc");
  EXPECT_TRUE(CString("abc", 0).IsEmpty());
  EXPECT_TRUE(CString("abc", -1).IsEmpty());
  const CString withNul("a\0b", 3);
  EXPECT_EQ(withNul.GetLength(), 3);
  EXPECT_EQ(std::memcmp(withNul.GetString(), "a\0b", 4), 0);
}

TEST(String, CanBeEmptied) {
  CString string("abc");
  string.Empty();
  EXPECT_TRUE(string.IsEmpty());
  string = "def";
  EXPECT_STREQ(string, "def");
}

TEST(String, CanBeAssignedAPartOfItself) {
  CString string("abcdef");
  string = string.GetString() + 2;
  EXPECT_STREQ(string, "cdef");
}

TEST(String, GivesItsCharactersUpToTheNul) {
  const CString string("ab\xFF");
  EXPECT_EQ(string.GetAt(0), 'a');
  EXPECT_EQ(string.GetAt(2), '\xFF');
  EXPECT_EQ(string.GetAt(3), '\0');
  EXPECT_THROW(string.GetAt(-1), CInvalidArgException);
  EXPECT_THROW(string.GetAt(4), CInvalidArgException);
  EXPECT_EQ(CString().GetAt(0), '\0');
}

TEST(String, IsAppendedTo) {
  CString string;
  string += "ab";
  string += CString("cd");
  string.Append("efgh", 2);
  EXPECT_STREQ(string, "abcdef");
  EXPECT_EQ(string.GetLength(), 6);
}

TEST(String, GrowsPieceByPiece) {
  CString string;
  std::string expected;
  for (int i = 0; i < 3000; ++i) {
    string += "piece,";
    expected += "piece,";
  }
  EXPECT_EQ(string.GetLength(), 18000);
  EXPECT_EQ(string.GetString(), expected);
}

TEST(String, CanBeAppendedToItself) {
  CString string("ab");
  string += string;
  EXPECT_STREQ(string, "abab");
  string += string.GetString() + 1;
  EXPECT_STREQ(string, "ababbab");
}

// The bytes lie in the memory that growing replaces.
TEST(String, CanBeAppendedBytesOfItself) {
  CString string("0123456789");
  std::string expected = "0123456789";
  for (int i = 0; i < 12; ++i) {
    string.Append(string.GetString() + 1, string.GetLength() - 1);
    expected += expected.substr(1);
  }
  EXPECT_EQ(string.GetString(), expected);
}

TEST(String, IsJoinedWithOthers) {
  const CString ab("ab");
  EXPECT_STREQ(ab + CString("cd"), "abcd");
  EXPECT_STREQ(ab + "cd", "abcd");
  EXPECT_STREQ("cd" + ab, "cdab");
  EXPECT_STREQ(ab + ab + "!" + ab, "abab!ab");
  EXPECT_STREQ(ab, "ab");
}

TEST(String, GivesItsLeftPart) {
  const CString string("abcdef");
  EXPECT_STREQ(string.Left(2), "ab");
  EXPECT_STREQ(string.Left(0), "");
  EXPECT_STREQ(string.Left(-1), "");
  EXPECT_STREQ(string.Left(6), "abcdef");
  EXPECT_STREQ(string.Left(100), "abcdef");
}

TEST(String, GivesAPartFromTheMiddle) {
  const CString string("abcdef");
  EXPECT_STREQ(string.Mid(2), "cdef");
  EXPECT_STREQ(string.Mid(6), "");
  EXPECT_STREQ(string.Mid(7), "");
  EXPECT_STREQ(string.Mid(-3), "abcdef");
  EXPECT_STREQ(string.Mid(2, 3), "cde");
  EXPECT_STREQ(string.Mid(2, 100), "cdef");
  EXPECT_STREQ(string.Mid(2, INT32_MAX), "cdef");
  EXPECT_STREQ(string.Mid(2, -1), "");
  EXPECT_STREQ(string.Mid(100, 2), "");
  EXPECT_STREQ(string.Mid(0, 6), "abcdef");
}

TEST(String, FindsAPart) {
  const CString string("a=b=cc");
  EXPECT_EQ(string.Find("="), 1);
  EXPECT_EQ(string.Find("=", 1), 1);
  EXPECT_EQ(string.Find("=", 2), 3);
  EXPECT_EQ(string.Find("=", 4), -1);
  EXPECT_EQ(string.Find("=c"), 3);
  EXPECT_EQ(string.Find("cc", 4), 4);
  EXPECT_EQ(string.Find("ccc"), -1);
  EXPECT_EQ(string.Find("B"), -1);
}

TEST(String, FindsNothingOutsideItself) {
  const CString string("abc");
  EXPECT_EQ(string.Find("a", -1), -1);
  EXPECT_EQ(string.Find("c", 3), -1);
  EXPECT_EQ(string.Find("a", 4), -1);
  EXPECT_EQ(string.Find(nullptr), -1);
  EXPECT_EQ(CString().Find("a"), -1);
}

TEST(String, IsComparedByteByByte) {
  const CString string("abc");
  EXPECT_EQ(string.Compare("abc"), 0);
  EXPECT_LT(string.Compare("abd"), 0);
  EXPECT_GT(string.Compare("abC"), 0);
  EXPECT_GT(string.Compare("ab"), 0);
  EXPECT_LT(string.Compare("abcd"), 0);
  EXPECT_TRUE(string == "abc");
  EXPECT_FALSE(string == "ABC");
  EXPECT_TRUE(string == CString("abc"));
  EXPECT_TRUE(string != "ab");
}

TEST(String, IsComparedWithoutRegardToCase) {
  const CString string("abcXYZ[1]");
  EXPECT_EQ(string.CompareNoCase("ABCxyz[1]"), 0);
  EXPECT_LT(string.CompareNoCase("ABD"), 0);
  EXPECT_GT(string.CompareNoCase("ABC"), 0);
  EXPECT_LT(string.CompareNoCase("abcxyz[1]2"), 0);
  EXPECT_NE(CString("[").CompareNoCase("{"), 0) << "only letters have case";
  EXPECT_NE(CString("@").CompareNoCase("`"), 0) << "only letters have case";
  EXPECT_GT(CString("\xFF").CompareNoCase("a"), 0) << "bytes are not negative";
}

TEST(String, LosesWhiteSpaceAtBothEnds) {
  EXPECT_STREQ(CString(" \t\n\v\f\rab c\r\n ").Trim(), "ab c");
  EXPECT_STREQ(CString("abc").Trim(), "abc");
  EXPECT_STREQ(CString(" \r\n").Trim(), "");
  EXPECT_STREQ(CString().Trim(), "");
  EXPECT_STREQ(CString("\xA0x\x85").Trim(), "\xA0x\x85");
  CString string(" a ");
  EXPECT_EQ(&string.Trim(), &string);
  EXPECT_EQ(string.GetLength(), 1);
}

TEST(String, LosesEveryOccurrenceOfACharacter) {
  CString string("a,b,,c,");
  EXPECT_EQ(string.Remove(','), 4);
  EXPECT_STREQ(string, "abc");
  EXPECT_EQ(string.GetLength(), 3);
  EXPECT_EQ(string.Remove(','), 0);
  EXPECT_STREQ(string, "abc");
  CString commas(",,,");
  EXPECT_EQ(commas.Remove(','), 3);
  EXPECT_TRUE(commas.IsEmpty());
  EXPECT_EQ(CString().Remove(','), 0);
}

#ifdef _WIN32

// In code page 932 a character's second byte may look like "|", "A" or a backslash.
TEST(StringInDoubleBytes, IsSearchedByWholeCharacters) {
  const CString string("\x83\x7C|\x83\x5C\\A\x83\x41");  // a katakana, its second byte alone, ...
  EXPECT_EQ(string.Find("|"), 2);
  EXPECT_EQ(string.Find("\\"), 5);
  EXPECT_EQ(string.Find("A"), 6);
  EXPECT_EQ(string.Find("A", 7), -1);
  EXPECT_EQ(string.Find("\x83\x5C"), 3);
  EXPECT_EQ(string.Find("\x83\x41"), 7);
}

TEST(StringInDoubleBytes, IsComparedByWholeCharacters) {
  EXPECT_EQ(CString("x\x83\x41Y").CompareNoCase("X\x83\x41y"), 0);
  EXPECT_NE(CString("\x83\x41").CompareNoCase("\x83\x61"), 0) << "second bytes have no case";
  EXPECT_NE(CString("\x83\x41").CompareNoCase("\x83\x41z"), 0);
}

#else

TEST(StringInUtf8, IsSearchedAndComparedByBytes) {
  const CString string("ソ|ポ");
  EXPECT_EQ(string.Find("|"), 3);
  EXPECT_EQ(string.Find("ポ"), 4);
  EXPECT_EQ(CString("xソY").CompareNoCase("Xソy"), 0);
  EXPECT_NE(CString("ソ").CompareNoCase("ポ"), 0);
}

#endif
