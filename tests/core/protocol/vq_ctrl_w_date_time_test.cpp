// SPDX-License-Identifier: MIT
// Date arithmetic, against the standard library's calendar.
#include <gmock/gmock.h>

#include <chrono>
#include <cmath>
#include <ostream>
#include <random>
#include <string>

#include "core/protocol/vq_ctrl_w.h"

namespace {

using std::chrono::days;
using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr double kJdOf1970 = 2440587.5;

SiteTime At(int year, int month, int day, int hour = 0, int minute = 0, double second = 0.0) {
  return {year, month, day, hour, minute, second, 0.0};
}

std::string Text(const SiteTime& time) {
  char text[80];
  std::snprintf(text, sizeof text, "%d-%02d-%02d %02d:%02d:%04.1f", time.year, time.month, time.day,
                time.hour, time.minute, time.second);
  return text;
}

std::string Added(SiteTime time, const SiteTime& offset) {
  CVQCtrlW::AddDateTime(time, offset, 0);
  return Text(time);
}

std::string Subtracted(SiteTime time, const SiteTime& offset) {
  CVQCtrlW::AddDateTime(time, offset, 1);
  return Text(time);
}

SiteTime Years(int count) {
  return {count, 0, 0, 0, 0, 0.0, 0.0};
}
SiteTime Months(int count) {
  return {0, count, 0, 0, 0, 0.0, 0.0};
}
SiteTime Days(int count) {
  return {0, 0, count, 0, 0, 0.0, 0.0};
}
SiteTime Time(int hours, int minutes, double seconds) {
  return {0, 0, 0, hours, minutes, seconds, 0.0};
}

// --- Adding --------------------------------------------------------------------------------------

TEST(AddDateTime, AddsAMinute) {
  EXPECT_EQ(Added(At(2024, 3, 5, 21, 7), Time(0, 1, 0)), "2024-03-05 21:08:00.0");
  EXPECT_EQ(Added(At(2024, 3, 5, 21, 59), Time(0, 1, 0)), "2024-03-05 22:00:00.0");
  EXPECT_EQ(Added(At(2023, 12, 31, 23, 59), Time(0, 1, 0)), "2024-01-01 00:00:00.0");
}

TEST(AddDateTime, KnowsLeapYears) {
  EXPECT_EQ(Added(At(2024, 2, 28, 23, 59), Time(0, 1, 0)), "2024-02-29 00:00:00.0");
  EXPECT_EQ(Added(At(2023, 2, 28, 23, 59), Time(0, 1, 0)), "2023-03-01 00:00:00.0");
  EXPECT_EQ(Added(At(2000, 2, 28), Days(1)), "2000-02-29 00:00:00.0");
  EXPECT_EQ(Added(At(1900, 2, 28), Days(1)), "1900-03-01 00:00:00.0");
  EXPECT_EQ(Added(At(2100, 2, 28), Days(1)), "2100-03-01 00:00:00.0");
  EXPECT_EQ(Added(At(1500, 2, 28), Days(1)), "1500-02-29 00:00:00.0") << "a Julian one";
}

TEST(AddDateTime, KeepsFractionsOfASecond) {
  EXPECT_EQ(Added(At(2024, 3, 5, 21, 7, 9.5), Time(0, 0, 50.25)), "2024-03-05 21:07:59.8");
  EXPECT_EQ(Added(At(2024, 3, 5, 21, 7, 9.5), Time(0, 0, 50.5)), "2024-03-05 21:08:00.0");
}

TEST(AddDateTime, CarriesAnyNumberOfDays) {
  EXPECT_EQ(Added(At(2024, 3, 5, 12), Time(36, 0, 0)), "2024-03-07 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 3, 5), Time(24 * 366, 0, 0)), "2025-03-06 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 3, 5), Time(0, 0, 86399.0)), "2024-03-05 23:59:59.0");
}

TEST(AddDateTime, MovesByMonthsAndYears) {
  EXPECT_EQ(Added(At(2024, 3, 5), Months(9)), "2024-12-05 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 3, 5), Months(10)), "2025-01-05 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 12, 5), Months(11)), "2025-11-05 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 3, 5), Years(-1000)), "1024-03-05 00:00:00.0");
}

TEST(AddDateTime, TurnsADayThatTheMonthDoesNotHaveIntoOneOfTheNext) {
  EXPECT_EQ(Added(At(2024, 3, 31), Months(1)), "2024-05-01 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 1, 31), Months(1)), "2024-03-02 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 2, 29), Years(1)), "2025-03-01 00:00:00.0");
}

TEST(AddDateTime, MovesDaysBeforeMonths) {
  EXPECT_EQ(Added(At(2024, 1, 31), {0, 1, 1, 0, 0, 0.0, 0.0}), "2024-03-01 00:00:00.0");
}

// --- Subtracting ---------------------------------------------------------------------------------

TEST(AddDateTime, SubtractsAnySpan) {
  EXPECT_EQ(Subtracted(At(2024, 3, 5, 21, 7), Time(0, 8, 0)), "2024-03-05 20:59:00.0");
  EXPECT_EQ(Subtracted(At(2024, 3, 5, 0, 0), Time(0, 1, 0)), "2024-03-04 23:59:00.0");
  EXPECT_EQ(Subtracted(At(2024, 3, 1), Days(1)), "2024-02-29 00:00:00.0");
  EXPECT_EQ(Subtracted(At(2023, 3, 1), Days(1)), "2023-02-28 00:00:00.0");
  EXPECT_EQ(Subtracted(At(2024, 1, 1), Time(0, 0, 0.5)), "2023-12-31 23:59:59.5");
  EXPECT_EQ(Subtracted(At(2024, 3, 5, 6), Time(30, 0, 1)), "2024-03-03 23:59:59.0");
  EXPECT_EQ(Subtracted(At(2024, 3, 5), Months(3)), "2023-12-05 00:00:00.0");
  EXPECT_EQ(Subtracted(At(2024, 3, 5), Months(2)), "2024-01-05 00:00:00.0");
  EXPECT_EQ(Subtracted(At(2024, 3, 5), Years(24)), "2000-03-05 00:00:00.0");
}

TEST(AddDateTime, TakesAnyNonZeroFlagForSubtracting) {
  SiteTime time = At(2024, 3, 5);
  CVQCtrlW::AddDateTime(time, Days(1), -7);
  EXPECT_EQ(Text(time), "2024-03-04 00:00:00.0");
}

TEST(AddDateTime, TakesNegativeSpans) {
  EXPECT_EQ(Added(At(2024, 3, 1), Days(-1)), "2024-02-29 00:00:00.0");
  EXPECT_EQ(Subtracted(At(2024, 2, 29), Days(-1)), "2024-03-01 00:00:00.0");
  EXPECT_EQ(Added(At(2024, 1, 1), Time(-25, 0, 0)), "2023-12-30 23:00:00.0");
}

// --- The calendar reform -------------------------------------------------------------------------

TEST(AddDateTime, SkipsTheTenDaysOfTheCalendarReform) {
  EXPECT_EQ(Added(At(1582, 10, 4), Days(1)), "1582-10-15 00:00:00.0");
  EXPECT_EQ(Subtracted(At(1582, 10, 15), Days(1)), "1582-10-04 00:00:00.0");
  EXPECT_EQ(Added(At(1582, 10, 4, 23, 59), Time(0, 1, 0)), "1582-10-15 00:00:00.0");
}

TEST(AddDateTime, SnapsASkippedDayToTheNearerSide) {
  for (int day = 5; day <= 9; ++day) {
    EXPECT_EQ(Added(At(1582, 9, day), Months(1)), "1582-10-04 00:00:00.0") << day;
    EXPECT_EQ(Subtracted(At(1583, 10, day), Years(1)), "1582-10-04 00:00:00.0") << day;
  }
  for (int day = 10; day <= 14; ++day) {
    EXPECT_EQ(Added(At(1582, 9, day), Months(1)), "1582-10-15 00:00:00.0") << day;
    EXPECT_EQ(Subtracted(At(1583, 10, day), Years(1)), "1582-10-15 00:00:00.0") << day;
  }
  EXPECT_EQ(Added(At(1582, 9, 4), Months(1)), "1582-10-04 00:00:00.0");
  EXPECT_EQ(Added(At(1582, 9, 15), Months(1)), "1582-10-15 00:00:00.0");
  EXPECT_EQ(Added(At(1582, 9, 30), Months(1)), "1582-10-30 00:00:00.0");
}

TEST(AddDateTime, SnapsInThatMonthOnly) {
  EXPECT_EQ(Added(At(1582, 8, 7), Months(1)), "1582-09-07 00:00:00.0");
  EXPECT_EQ(Added(At(1581, 9, 12), Months(1)), "1581-10-12 00:00:00.0");
  EXPECT_EQ(Added(At(1582, 10, 20), Months(1)), "1582-11-20 00:00:00.0");
}

TEST(AddDateTime, LeavesTheZoneAlone) {
  for (const double zone : {-12.0, -4.5, 0.0, 9.0}) {
    SiteTime time = {2024, 3, 5, 23, 59, 0.0, zone};
    SiteTime offset = Time(0, 1, 0);
    offset.zone = 5.0;
    CVQCtrlW::AddDateTime(time, offset, 0);
    EXPECT_EQ(Text(time), "2024-03-06 00:00:00.0");
    EXPECT_EQ(time.zone, zone);
  }
}

// --- Against the standard library ----------------------------------------------------------------

// A date moved by days, then by months and years; a day too many runs into the next month.
year_month_day Moved(const SiteTime& from, int dayCount, int monthCount, int yearCount) {
  using namespace std::chrono;
  const year_month_day shifted{sys_days{year{from.year} / from.month / from.day} + days{dayCount}};
  const year_month first = shifted.year() / shifted.month() + months{monthCount} + years{yearCount};
  return year_month_day{sys_days{first / 1} + (days{unsigned{shifted.day()}} - days{1})};
}

class RandomSpans {
 public:
  int Between(int low, int high) { return std::uniform_int_distribution<int>(low, high)(engine_); }
  SiteTime Moment() {
    const auto day = sys_days{std::chrono::year{1700} / 1 / 1} + days{Between(0, 255000)};
    const year_month_day date{day};
    return At(static_cast<int>(date.year()), static_cast<int>(unsigned{date.month()}),
              static_cast<int>(unsigned{date.day()}), Between(0, 23), Between(0, 59),
              Between(0, 119) / 2.0);
  }

 private:
  std::mt19937 engine_{15};
};

TEST(AddDateTime, AgreesWithTheStandardCalendar) {
  RandomSpans random;
  for (int i = 0; i < 20000; ++i) {
    const SiteTime from = random.Moment();
    const int sign = random.Between(0, 1) == 0 ? 1 : -1;
    SiteTime offset = {random.Between(-90, 90),
                       0,
                       random.Between(-400, 400),
                       random.Between(0, 60),
                       random.Between(0, 90),
                       random.Between(0, 200) / 2.0,
                       0.0};
    const int halves = 2 * (from.hour * 3600 + from.minute * 60) + std::lround(2 * from.second) +
                       sign * (2 * (offset.hour * 3600 + offset.minute * 60) +
                               static_cast<int>(std::lround(2 * offset.second)));
    constexpr int kHalvesADay = 2 * 86400;
    // Whole days back to midnight come out as 24 o'clock of the day before; see below.
    if (halves < 0 && halves % kHalvesADay == 0) continue;
    const int carry = static_cast<int>(std::floor(halves / static_cast<double>(kHalvesADay)));
    const int left = halves - carry * kHalvesADay;
    // Within one year of the range once the days are moved, whatever month that leads to.
    const year_month_day shifted = Moved(from, carry + sign * offset.day, 0, 0);
    const int month = static_cast<int>(unsigned{shifted.month()});
    offset.month = sign * random.Between(-11 - month, 23 - month);

    const year_month_day expected =
        Moved(from, carry + sign * offset.day, sign * offset.month, sign * offset.year);
    SiteTime result = from;
    CVQCtrlW::AddDateTime(result, offset, sign < 0 ? 1 : 0);
    ASSERT_EQ(Text(result), Text(At(static_cast<int>(expected.year()),
                                    static_cast<int>(unsigned{expected.month()}),
                                    static_cast<int>(unsigned{expected.day()}), left / 7200,
                                    left / 120 % 60, left % 120 / 2.0)))
        << Text(from) << (sign < 0 ? " - " : " + ") << Text(offset);
  }
}

TEST(AddDateTime, WritesAWholeDayBackToMidnightAsTwentyFourHours) {
  EXPECT_EQ(Subtracted(At(2024, 3, 5), Time(24, 0, 0)), "2024-03-03 24:00:00.0");
}

// Two years of months more than a date can take; the driver itself only ever adds a minute.
TEST(AddDateTime, MiscountsAYearBeyondOneYearOfMonths) {
  EXPECT_EQ(Added(At(2024, 12, 5), Months(12)), "2026-12-05 00:00:00.0");
  EXPECT_EQ(Subtracted(At(2024, 1, 5), Months(13)), "2024-12-05 00:00:00.0");
}

// --- Julian dates --------------------------------------------------------------------------------

TEST(DateTimeToJd, KnowsTheEpoch) {
  EXPECT_EQ(CVQCtrlW::DateTimeToJd(At(2000, 1, 1, 12)), 2451545.0);
  EXPECT_EQ(CVQCtrlW::DateTimeToJd(At(1582, 10, 15)), 2299160.5);
  EXPECT_EQ(CVQCtrlW::DateTimeToJd(At(1582, 10, 4)), 2299159.5);
}

TEST(DateTimeToJd, TurnsLocalTimeIntoUniversalTime) {
  SiteTime time = At(2000, 1, 1, 21);
  time.zone = 9.0;
  EXPECT_EQ(CVQCtrlW::DateTimeToJd(time), 2451545.0);
  time = At(2000, 1, 1, 6);
  time.zone = -6.0;
  EXPECT_EQ(CVQCtrlW::DateTimeToJd(time), 2451545.0);
  time = At(2000, 1, 2, 2);
  time.zone = 14.0;
  EXPECT_DOUBLE_EQ(CVQCtrlW::DateTimeToJd(time), 2451545.0);
}

TEST(DateTimeToJd, AgreesWithTheStandardCalendar) {
  RandomSpans random;
  for (int i = 0; i < 20000; ++i) {
    SiteTime time = random.Moment();
    time.zone = random.Between(-24, 28) / 2.0;
    const sys_days day = sys_days{std::chrono::year{time.year} / time.month / time.day};
    const double seconds =
        time.hour * 3600.0 + time.minute * 60.0 + time.second - time.zone * 3600.0;
    const double expected = kJdOf1970 + day.time_since_epoch().count() + seconds / 86400.0;
    ASSERT_NEAR(CVQCtrlW::DateTimeToJd(time), expected, 2e-9) << Text(time);
  }
}

TEST(JdToDateTime, TakesAJulianDateApart) {
  SiteTime time = {0, 0, 0, 0, 0, 0.0, -4.5};
  CVQCtrlW::JdToDateTime(2451545.0, time);
  EXPECT_EQ(Text(time), "2000-01-01 12:00:00.0");
  CVQCtrlW::JdToDateTime(2451545.75, time);
  EXPECT_EQ(Text(time), "2000-01-02 06:00:00.0");
  CVQCtrlW::JdToDateTime(2299160.5, time);
  EXPECT_EQ(Text(time), "1582-10-15 00:00:00.0");
  CVQCtrlW::JdToDateTime(2299159.5, time);
  EXPECT_EQ(Text(time), "1582-10-04 00:00:00.0");
  EXPECT_EQ(time.zone, -4.5) << "is left alone";
}

TEST(JdToDateTime, UndoesDateTimeToJd) {
  RandomSpans random;
  for (int i = 0; i < 20000; ++i) {
    const SiteTime from = random.Moment();
    const double jd = CVQCtrlW::DateTimeToJd(from);
    SiteTime time = {};
    CVQCtrlW::JdToDateTime(jd, time);
    // Times just before and just after a full minute are the same moment.
    ASSERT_EQ(CVQCtrlW::DateTimeToJd(time), jd) << Text(from) << " became " << Text(time);
    ASSERT_GE(time.second, -1e-3);
    ASSERT_LT(time.second, 60.0 + 1e-3);
    ASSERT_LT(time.hour, 24);
    ASSERT_LT(time.minute, 60);
  }
}

}  // namespace
