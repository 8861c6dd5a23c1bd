// SPDX-License-Identifier: MIT
// How messages are broken into lines; every byte is 10 pixels wide unless a test says otherwise.
#include "library/ui/message_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

LONG Ten(char) {
  return 10;
}

MessageText LayOut(const std::string& text, LONG minimum = 0) {
  return LayOutMessage(CString(text.c_str()), &Ten, minimum);
}

std::string Text(const MessageText& text) {
  return std::string(text.text.GetString());
}

std::string Many(int count, char c = 'x') {
  return std::string(static_cast<size_t>(count), c);
}

TEST(MessageTextTest, OneShortLineGetsALineEnd) {
  const MessageText text = LayOut("hello");
  EXPECT_EQ(Text(text), "hello\n");
  EXPECT_EQ(text.width, 50);
  EXPECT_EQ(text.lines, 1);
}

TEST(MessageTextTest, TheWidestLineGivesTheWidth) {
  const MessageText text = LayOut("a\nlonger\nbc");
  EXPECT_EQ(text.width, 60);
  EXPECT_EQ(text.lines, 3);
  EXPECT_EQ(Text(text), "a\nlonger\nbc\n");
}

TEST(MessageTextTest, ItIsNeverNarrowerThanTheTemplate) {
  EXPECT_EQ(LayOut("hello", 175).width, 175);
}

TEST(MessageTextTest, CarriageReturnsAreMeasuredButNotKept) {
  const MessageText text = LayOut("ab\r\ncd\r\n");
  EXPECT_EQ(Text(text), "ab\ncd\n\n");
  EXPECT_EQ(text.width, 30);
  EXPECT_EQ(text.lines, 3);
}

TEST(MessageTextTest, ALineOfExactlyTheLimitIsNotBroken) {
  const MessageText text = LayOut(Many(60));
  EXPECT_EQ(Text(text), Many(60) + "\n");
  EXPECT_EQ(text.width, 600);
  EXPECT_EQ(text.lines, 1);
}

TEST(MessageTextTest, ALineOf700PixelsIs600WideAndCountsAsTwoRows) {
  const MessageText text = LayOut(Many(70));
  EXPECT_EQ(Text(text), Many(60) + "\n" + Many(10) + "\n");
  EXPECT_EQ(text.width, 600);
  EXPECT_EQ(text.lines, 2);
}

// The character before which a piece is broken counts as if it had no width, so later pieces hold
// one more.
TEST(MessageTextTest, LaterPiecesAreOneCharacterLonger) {
  const MessageText text = LayOut(Many(200));
  EXPECT_EQ(Text(text), Many(60) + "\n" + Many(61) + "\n" + Many(61) + "\n" + Many(18) + "\n");
  EXPECT_EQ(text.lines, 2);
}

TEST(MessageTextTest, EveryLongLineCountsTwiceAndShortOnesOnce) {
  const MessageText text = LayOut(Many(70) + "\nshort\n" + Many(500));
  EXPECT_EQ(text.lines, 5);
  EXPECT_EQ(text.width, 600);
}

TEST(MessageTextTest, ADoubleByteCharacterIsMeasuredAsTwoBytesAndNeverTornApart) {
  ASSERT_TRUE(IsDBCSLeadByte(0x96));
  std::string text;
  for (int i = 0; i < 40; ++i) text += "\x96\x6B";  // north
  const MessageText whole = LayOut(text);
  EXPECT_EQ(Text(whole), text.substr(0, 60) + "\n" + text.substr(60) + "\n");
  // Half a character more to the left, the limit falls into the middle of one.
  const MessageText shifted = LayOut("x" + text);
  EXPECT_EQ(Text(shifted), "x" + text.substr(0, 58) + "\n" + text.substr(58) + "\n");
}

// A character of UTF-8 is 12 pixels wide, whatever its bytes.
MessageText LayOutUtf8(const std::u8string& text) {
  const auto twelve = [](const CString&) { return LONG{12}; };
  const CString narrow(reinterpret_cast<const char*>(text.c_str()));
  return LayOutMessage(narrow, &Ten, 0, twelve);
}

TEST(MessageTextTest, Utf8IsMeasuredCharacterByCharacterAndNeverTornApart) {
  std::u8string fitting;
  for (int i = 0; i < 50; ++i) fitting += u8"北";
  const MessageText line = LayOutUtf8(fitting);
  EXPECT_EQ(line.width, 600);
  EXPECT_EQ(line.lines, 1);
  EXPECT_EQ(Text(line), reinterpret_cast<const char*>((fitting + u8"\n").c_str()));
  const MessageText broken = LayOutUtf8(fitting + u8"aé😀");
  EXPECT_EQ(broken.width, 600);
  EXPECT_EQ(broken.lines, 2);
  EXPECT_EQ(Text(broken), reinterpret_cast<const char*>((fitting + u8"\naé😀\n").c_str()));
}

TEST(MessageTextTest, Utf8ThatEndsInsideOfACharacterIsKept) {
  const auto twelve = [](const CString&) { return LONG{12}; };
  EXPECT_EQ(Text(LayOutMessage("a\xE5\x8C", &Ten, 0, twelve)), "a\xE5\x8C\n");
  EXPECT_EQ(Text(LayOutMessage("\x8C\x97"
                               "b",
                               &Ten, 0, twelve)),
            "\x8C\x97"
            "b\n");
}

}  // namespace
