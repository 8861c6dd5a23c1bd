// SPDX-License-Identifier: MIT
// The bar, and the line it stands in.
#include <gtest/gtest.h>

#include <cmath>

#include "console/progress_bar.h"
#include "console/progress_line.h"

namespace velquinctl {
namespace {

TEST(ProgressBar, GrowsWithTheFraction) {
  EXPECT_EQ(ProgressBar(0.0, 10), "[          ]   0%");
  EXPECT_EQ(ProgressBar(0.5, 10), "[=====>    ]  50%");
  EXPECT_EQ(ProgressBar(0.999, 10), "[=========>]  99%");
  EXPECT_EQ(ProgressBar(1.0, 10), "[==========] 100%");
}

TEST(ProgressBar, KeepsToItsFrame) {
  EXPECT_EQ(ProgressBar(-3.0, 4), "[    ]   0%");
  EXPECT_EQ(ProgressBar(7.0, 4), "[====] 100%");
  EXPECT_EQ(ProgressBar(std::nan(""), 4), "[    ]   0%");
}

struct ProgressLineTest : testing::Test {
  ProgressLine::Writer Writer() {
    return [this](std::string_view text) { written += text; };
  }
  std::string written;
};

TEST_F(ProgressLineTest, LiveRedrawsAndWipesWhatWasLonger) {
  {
    ProgressLine line(ProgressMode::kLive, Writer());
    line.Show(0.0, "12.34\u00b0 left");
    line.Show(0.1, "9\u00b0");
  }
  // Eleven columns stood there, two stand there now.
  EXPECT_EQ(written, "\r12.34\u00b0 left\r9\u00b0         \n");
}

TEST_F(ProgressLineTest, LiveWithoutAnythingShownLeavesNoTrace) {
  {
    const ProgressLine line(ProgressMode::kLive, Writer());
  }
  EXPECT_EQ(written, "");
}

TEST_F(ProgressLineTest, PlainWritesALineASecond) {
  ProgressLine line(ProgressMode::kPlain, Writer());
  for (int look = 0; look <= 25; ++look) line.Show(look / 10.0, std::to_string(look));
  EXPECT_EQ(written, "0\n10\n20\n");
}

TEST_F(ProgressLineTest, NoneShowsNothingButKeepsRows) {
  ProgressLine line(ProgressMode::kNone, Writer());
  line.Show(0.0, "way");
  line.Keep("row");
  EXPECT_EQ(written, "row\n");
}

TEST_F(ProgressLineTest, AKeptRowTakesTheRedrawnLinesPlace) {
  ProgressLine line(ProgressMode::kLive, Writer());
  line.Show(0.0, "abc");
  line.Keep("row");
  line.Show(0.1, "d");
  line.End();
  EXPECT_EQ(written, "\rabc\rrow\n\rd\n");
}

}  // namespace
}  // namespace velquinctl
