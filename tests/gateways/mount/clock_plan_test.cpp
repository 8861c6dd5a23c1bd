// SPDX-License-Identifier: MIT
#include "gateways/mount/clock_plan.h"

#include <gmock/gmock.h>

#include <cmath>
#include <limits>

namespace {

using namespace std::chrono_literals;
using velquin::ClockHandOver;
using velquin::ClocksDiffer;
using velquin::NextFullMinute;
using velquin::UtcTime;

UtcTime At(std::chrono::year_month_day date, std::chrono::nanoseconds ofDay) {
  return std::chrono::sys_days(date) + ofDay;
}

std::string TextOf(const SiteTime& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%d-%d-%d %d:%d:%.1f", time.year, time.month, time.day,
                time.hour, time.minute, time.second);
  return text;
}

constexpr std::chrono::year_month_day kNewYearsEve{std::chrono::year(2023), std::chrono::December,
                                                   std::chrono::day(31)};

TEST(NextFullMinute, CarriesIntoTheNewYear) {
  const ClockHandOver next = NextFullMinute(At(kNewYearsEve, 23h + 59min + 12s + 250ms), 0ns, 0);
  EXPECT_EQ(next.wait, 47s + 750ms);
  EXPECT_EQ(TextOf(next.local), "2024-1-1 0:0:0.0");
}

TEST(NextFullMinute, TellsLocalTime) {
  const UtcTime time = At(kNewYearsEve, 14h + 59min + 1s);
  EXPECT_EQ(TextOf(NextFullMinute(time, 0ns, 9).local), "2024-1-1 0:0:0.0");
  EXPECT_EQ(TextOf(NextFullMinute(time, 0ns, -5).local), "2023-12-31 10:0:0.0");
}

TEST(NextFullMinute, LeavesOutAMinuteThatIsTooNear) {
  const UtcTime time = At(kNewYearsEve, 1h + 1min + 59s + 600ms);
  EXPECT_EQ(NextFullMinute(time, 400ms, 0).wait, 400ms);
  EXPECT_EQ(NextFullMinute(time, 401ms, 0).wait, 60s + 400ms);
}

TEST(NextFullMinute, TakesAMinuteThatIsNow) {
  EXPECT_EQ(NextFullMinute(At(kNewYearsEve, 2h), 0ns, 0).wait, 0ns);
}

TEST(ClocksDiffer, FromAMinuteOn) {
  EXPECT_FALSE(ClocksDiffer(60000.0, 60000.0 + 59.9 / 86400.0));
  EXPECT_TRUE(ClocksDiffer(60000.0, 60000.0 - 60.1 / 86400.0));
  EXPECT_TRUE(ClocksDiffer(std::numeric_limits<double>::quiet_NaN(), 60000.0));
}

TEST(MjdOf, CountsDaysSince1858) {
  using std::chrono::January;
  const std::chrono::year_month_day date(std::chrono::year(2000), January, std::chrono::day(1));
  EXPECT_DOUBLE_EQ(velquin::MjdOf(At(date, 12h)), 51544.5);
}

}  // namespace
