// SPDX-License-Identifier: MIT
// Positions written as the text of a query, and such texts taken apart.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "core/protocol/vq_ctrl_w.h"
#include "tests/core/protocol/vq_ctrl_probe.h"

namespace {

using testing::ElementsAre;

class QueryText : public testing::Test {
 protected:
  std::string Format(double raDegrees, double decDegrees) {
    const double position[2] = {raDegrees, decDegrees};
    return session.FormatRaDecQuery(position).GetString();
  }
  static std::vector<std::string> Split(const char* text) {
    CVQCtrlW::StringList list;
    CVQCtrlW::SplitQuery(text, list);
    return Texts(list);
  }
  static std::vector<std::string> Texts(const CVQCtrlW::StringList& list) {
    std::vector<std::string> texts;
    for (ptrdiff_t index = 0; index < list.GetSize(); ++index) {
      texts.push_back(list[index].GetString());
    }
    return texts;
  }
  /// @return the value found, or "(none)".
  static std::string Find(const char* text, const char* key) {
    CVQCtrlW::StringList list;
    CVQCtrlW::SplitQuery(text, list);
    CString value = "untouched";
    if (CVQCtrlW::FindQueryValue(list, key, value) == 1) return value.GetString();
    EXPECT_STREQ(value, "untouched");
    return "(none)";
  }

  CVQCtrlW session;
  VQCtrlProbe probe{session};
};

TEST_F(QueryText, WritesPositionsCoarsely) {
  EXPECT_EQ(Format(83.625, 22.0), "ra=05+34.5&dec=22+0");
  EXPECT_EQ(Format(0.0, 0.0), "ra=00+00.0&dec=00+0");
  EXPECT_EQ(Format(180.0, -5.25), "ra=12+00.0&dec=-05+15");
  EXPECT_EQ(Format(359.75, 89.5), "ra=23+59.0&dec=89+30");
  EXPECT_EQ(Format(15.0, -0.5), "ra=01+00.0&dec=-00+30");
}

TEST_F(QueryText, WritesPositionsFinelyWhenAsked) {
  probe.FineQuery() = 1;
  EXPECT_EQ(Format(83.625, 22.0), "ra=05+34.500&dec=22+0.00");
  EXPECT_EQ(Format(180.0, -5.25), "ra=12+0.000&dec=-05+15.00");
  EXPECT_EQ(Format(45.015625, -0.125), "ra=03+0.062&dec=-00+7.50");
}

TEST_F(QueryText, IsCoarseAtFirst) {
  EXPECT_EQ(probe.FineQuery(), 0);
}

TEST_F(QueryText, IsSplitAtEveryAmpersand) {
  EXPECT_THAT(Split("ra=05+34.5&dec=22+0&name=x y"),
              ElementsAre("ra=05+34.5", "dec=22+0", "name=x y"));
  EXPECT_THAT(Split("one"), ElementsAre("one"));
  EXPECT_THAT(Split("a&&b"), ElementsAre("a", "", "b"));
}

TEST_F(QueryText, HasAnEmptyPieceAtAnAmpersandThatBeginsOrEndsIt) {
  EXPECT_THAT(Split("&b"), ElementsAre("", "b"));
  EXPECT_THAT(Split("a&"), ElementsAre("a", ""));
  EXPECT_THAT(Split("&"), ElementsAre("", ""));
  EXPECT_THAT(Split(""), ElementsAre(""));
}

TEST_F(QueryText, IsAddedToTheListWhenSplit) {
  CVQCtrlW::StringList list;
  CVQCtrlW::SplitQuery("a&b", list);
  CVQCtrlW::SplitQuery("c", list);
  EXPECT_THAT(Texts(list), ElementsAre("a", "b", "c"));
}

TEST_F(QueryText, IsSearchedForAKeyInAnyCase) {
  EXPECT_EQ(Find("ra=1&dec=2", "ra"), "1");
  EXPECT_EQ(Find("ra=1&dec=2", "DEC"), "2");
  EXPECT_EQ(Find("Ra=1", "rA"), "1");
  EXPECT_EQ(Find("ra=", "ra"), "");
  EXPECT_EQ(Find("ra=a=b", "ra"), "a=b");
}

TEST_F(QueryText, HasTheFirstOfTwoEntries) {
  EXPECT_EQ(Find("x=0&ra=1&RA=2", "ra"), "1");
}

TEST_F(QueryText, HasNoValueForPartOfAKey) {
  EXPECT_EQ(Find("ra=1", "r"), "(none)");
  EXPECT_EQ(Find("ra=1", "a"), "(none)");
  EXPECT_EQ(Find("ra", "ra"), "(none)");
  EXPECT_EQ(Find("ra=1", "rad"), "(none)");
  EXPECT_EQ(Find("", "ra"), "(none)");
}

TEST_F(QueryText, CanBeReadBack) {
  const std::string text = Format(83.625, -22.5);
  EXPECT_EQ(Find(text.c_str(), "ra"), "05+34.5");
  EXPECT_EQ(Find(text.c_str(), "dec"), "-22+30");
}

}  // namespace
