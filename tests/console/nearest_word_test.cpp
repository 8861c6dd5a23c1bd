// SPDX-License-Identifier: MIT
#include "console/nearest_word.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

const std::vector<std::string> kWords = {"goto", "stop", "status", "--help", "--timeout"};

TEST(NearestWord, IsOneLetterAwayFromAShortWord) {
  EXPECT_EQ(NearestWord("got", kWords), "goto");
  EXPECT_EQ(NearestWord("sotp", kWords), "stop");
  EXPECT_EQ(NearestWord("gotto", kWords), "goto");
  EXPECT_EQ(NearestWord("--hlp", kWords), "--help");
  EXPECT_EQ(NearestWord("gt", {"goto"}), "");
}

TEST(NearestWord, IsTwoLettersAwayFromALongWord) {
  EXPECT_EQ(NearestWord("--tmeu", kWords), "");
  EXPECT_EQ(NearestWord("--timotu", kWords), "--timeout");
  EXPECT_EQ(NearestWord("sttaus", kWords), "status");
  EXPECT_EQ(NearestWord("statistics", kWords), "");
}

TEST(NearestWord, IsTheClosestOfSeveral) {
  EXPECT_EQ(NearestWord("--tolerence", {"--telerence", "--tolerance"}), "--telerence");
  EXPECT_EQ(NearestWord("--eest", {"--west", "--east", "--eest"}), "--eest");
}

TEST(NearestWord, IsNoneForAWordThatIsNoneOrFarTooLong) {
  EXPECT_EQ(NearestWord("", kWords), "");
  EXPECT_EQ(NearestWord(std::string(100'000, 'x'), kWords), "");
  EXPECT_EQ(NearestWord("word", {}), "");
}

}  // namespace
}  // namespace velquinctl
