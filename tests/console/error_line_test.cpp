// SPDX-License-Identifier: MIT
// Whatever went wrong is told in one line.
#include "console/error_line.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

TEST(ErrorLine, IsWhatWasSaid) {
  EXPECT_EQ(ErrorLine(""), "");
  EXPECT_EQ(ErrorLine("velquinctl: \"2\u00B0\" is not a number"),
            "velquinctl: \"2\u00B0\" is not a number");
  EXPECT_EQ(ErrorLine(std::string(800, 'x')), std::string(800, 'x'));
}

TEST(ErrorLine, HasBlanksForControlCharacters) {
  EXPECT_EQ(ErrorLine("a\r\nb\tc\x1B[31md\x7F"), "a  b c [31md ");
  EXPECT_EQ(ErrorLine(std::string("a\0b", 3)), "a b");
}

TEST(ErrorLine, LacksTheMiddleOfALongText) {
  const std::string line =
      ErrorLine("begin " + std::string(10'000, 'x') + '\n' + std::string(500, 'y') + " end");
  EXPECT_EQ(line.size(), 805u);
  EXPECT_EQ(line.rfind("begin xxx", 0), 0u);
  EXPECT_EQ(line.substr(line.size() - 7), "yyy end");
  EXPECT_EQ(line.substr(395, 15), "xxxxx ... yyyyy");
}

TEST(ErrorLine, CutsNoCharacterInHalf) {
  for (const char* begin : {"", "a", "ab"}) {
    std::string text = begin;
    for (int i = 0; i < 1000; ++i) text += "\u671B";  // three bytes
    const std::string line = ErrorLine(text);
    const size_t gap = line.find(" ... ");
    ASSERT_NE(gap, std::string::npos);
    EXPECT_EQ((gap - std::string(begin).size()) % 3, 0u);
    EXPECT_EQ((line.size() - gap - 5) % 3, 0u);
    EXPECT_LE(line.size(), 805u);
  }
}

}  // namespace
}  // namespace velquinctl
