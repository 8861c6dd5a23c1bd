// SPDX-License-Identifier: MIT
// Clock readings from the command line.
#include "console/local_time_text.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

TEST(LocalTime, IsReadToTheFractionOfASecond) {
  const auto time = ParseLocalTime("2026-11-21T22:30:05.25");
  ASSERT_TRUE(time);
  EXPECT_EQ(time->year, 2026);
  EXPECT_EQ(time->month, 11);
  EXPECT_EQ(time->day, 21);
  EXPECT_EQ(time->hour, 22);
  EXPECT_EQ(time->minute, 30);
  EXPECT_DOUBLE_EQ(time->second, 5.25);
}

TEST(LocalTime, MayLeaveTheSecondsOutAndUseABlank) {
  const auto time = ParseLocalTime("2026-01-02 03:04");
  ASSERT_TRUE(time);
  EXPECT_EQ(time->hour, 3);
  EXPECT_EQ(time->second, 0.0);
}

TEST(LocalTime, KnowsTheCalendar) {
  EXPECT_TRUE(ParseLocalTime("2028-02-29T00:00"));
  EXPECT_FALSE(ParseLocalTime("2026-02-29T00:00"));
  EXPECT_FALSE(ParseLocalTime("2026-13-01T00:00"));
  EXPECT_FALSE(ParseLocalTime("2026-00-01T00:00"));
  EXPECT_FALSE(ParseLocalTime("2026-04-31T00:00"));
}

TEST(LocalTime, RefusesWhatIsNone) {
  for (const char* text :
       {"", "now", "2026-11-21", "2026-11-21T24:00", "2026-11-21T23:60", "2026-11-21T23:59:60",
        "2026-11-21T23:59:5", "2026-11-21T23:59:", "2026-11-21T23:59:05x", "2026-11-21T23:59:05.",
        "2026/11/21 23:59", "26-11-21T23:59", "2026-11-21T23:59Z", "2026-11-21T23:59:-1"})
    EXPECT_FALSE(ParseLocalTime(text)) << text;
}

}  // namespace
}  // namespace velquinctl
