// SPDX-License-Identifier: MIT
#include "include/velquin_util.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cmath>

namespace {

using namespace std::chrono;

constexpr double kUnixEpoch = 2440587.5;  // 1970-01-01 00:00

struct CalendarDate {
  int32_t year;
  int32_t month;
  double day;
};

CalendarDate DateOf(double jd) {
  CalendarDate date = {-77, -77, -77.0};
  JdToDate(jd, &date.year, &date.month, &date.day);
  return date;
}

void ExpectDate(double jd, int year, int month, double day) {
  const CalendarDate date = DateOf(jd);
  EXPECT_EQ(date.year, year) << jd;
  EXPECT_EQ(date.month, month) << jd;
  EXPECT_DOUBLE_EQ(date.day, day) << jd;
}

// Calls a function for every 17th day of the Gregorian calendar, as the standard library counts:
// 17 has no factor in common with the months' and years' lengths, so every kind of day comes up.
template <typename Function>
void ForEveryGregorianDate(Function function) {
  const sys_days end = year(2400) / December / 31;
  for (sys_days day = year(1582) / October / 15; day <= end; day += days(17)) {
    function(year_month_day(day), day.time_since_epoch().count() + kUnixEpoch);
  }
}

int Year(const year_month_day& date) {
  return static_cast<int>(date.year());
}
unsigned Month(const year_month_day& date) {
  return static_cast<unsigned>(date.month());
}
unsigned Day(const year_month_day& date) {
  return static_cast<unsigned>(date.day());
}

}  // namespace

TEST(CalcJd, CountsTheDaysToTheModernEpoch) {
  EXPECT_EQ(CalcJd(2000.0, 1.0, 1.5), 2451545.0);
  EXPECT_EQ(CalcJd(1970.0, 1.0, 1.0), kUnixEpoch);
  EXPECT_EQ(CalcJd(1858.0, 11.0, 17.0), 2400000.5);
}

TEST(CalcJd, BeginsTheGregorianCalendarTheDayAfterTheFourth) {
  EXPECT_EQ(CalcJd(1582.0, 10.0, 4.0), 2299159.5);
  EXPECT_EQ(CalcJd(1582.0, 10.0, 15.0), 2299160.5);
}

// The days that never were: which calendar counts depends on the uncorrected result, and at exactly
// the threshold it is still the old one.
TEST(CalcJd, DecidesTheCalendarByTheUncorrectedResult) {
  EXPECT_EQ(CalcJd(1582.0, 10.0, 5.0), 2299160.5);
  EXPECT_EQ(CalcJd(1582.0, 10.0, 5.25), 2299150.75);
  EXPECT_EQ(CalcJd(1582.0, 10.0, 14.0), 2299159.5);
}

TEST(CalcJd, UsesTheJulianCalendarBeforeTheReform) {
  EXPECT_EQ(CalcJd(1500.0, 3.0, 1.0), CalcJd(1500.0, 2.0, 29.0) + 1.0);
  EXPECT_EQ(CalcJd(333.0, 1.0, 27.5), 1842713.0);
  EXPECT_EQ(CalcJd(837.0, 4.0, 10.3), 2026871.8);
}

TEST(CalcJd, CountsJanuaryAndFebruaryToTheYearBefore) {
  // The century rule is applied to the shifted year: 2100 has no 29 February, 2000 has one.
  EXPECT_EQ(CalcJd(2100.0, 3.0, 1.0) - CalcJd(2100.0, 2.0, 28.0), 1.0);
  EXPECT_EQ(CalcJd(2000.0, 3.0, 1.0) - CalcJd(2000.0, 2.0, 28.0), 2.0);
  EXPECT_EQ(CalcJd(2100.0, 1.0, 1.0) - CalcJd(2099.0, 12.0, 31.0), 1.0);
  EXPECT_EQ(CalcJd(2026.0, 2.0, 28.0), 2461099.5);
}

TEST(CalcJd, AddsTheFractionOfTheDay) {
  EXPECT_DOUBLE_EQ(CalcJd(2026.0, 3.0, 5.0 + 21.0 / 24.0 - 9.0 / 24.0), 2461105.0);
  // A time zone east of Greenwich may reach back into the day before.
  EXPECT_DOUBLE_EQ(CalcJd(2026.0, 3.0, 1.0 - 9.0 / 24.0), 2461099.5 + 15.0 / 24.0);
}

TEST(CalcJd, AgreesWithTheStandardLibraryFrom1582To2400) {
  int dates = 0;
  ForEveryGregorianDate([&](const year_month_day& date, double jd) {
    ASSERT_EQ(CalcJd(Year(date), Month(date), Day(date)), jd)
        << Year(date) << '-' << Month(date) << '-' << Day(date);
    ASSERT_EQ(CalcJd(Year(date), Month(date), Day(date) + 0.75), jd + 0.75);
    ++dates;
  });
  EXPECT_EQ(dates, 17580);
}

TEST(GetMjd, CountsFromThe17thOfNovember1858) {
  EXPECT_EQ(GetMjd(2451545.0), 51544.5);
  EXPECT_EQ(GetMjd(2400000.5), 0.0);
  EXPECT_EQ(GetMjd(0.0), -2400000.5);
}

TEST(JdToDate, GivesTheModernEpoch) {
  ExpectDate(2451545.0, 2000, 1, 1.5);
}

TEST(JdToDate, LeavesOutTheDaysThatNeverWere) {
  ExpectDate(2299160.5, 1582, 10, 15.0);
  ExpectDate(2299159.5, 1582, 10, 4.0);
  ExpectDate(2299160.25, 1582, 10, 4.75);
}

TEST(JdToDate, UsesTheJulianCalendarBeforeTheReform) {
  ExpectDate(1842713.0, 333, 1, 27.5);
  ExpectDate(2268991.5, 1500, 2, 29.0);
  ExpectDate(0.0, -4712, 1, 1.5);
}

// Hosts may throw both away, or one, into the same variable.
TEST(JdToDate, WritesTheYearAfterTheMonth) {
  int32_t both = 0;
  double day = 0.0;
  JdToDate(2461099.5, &both, &both, &day);
  EXPECT_EQ(both, 2026);
  EXPECT_EQ(day, 28.0);
}

TEST(JdToDate, BeginsTheDayAtMidnight) {
  ExpectDate(2461099.5, 2026, 2, 28.0);
  ExpectDate(2461100.25, 2026, 2, 28.75);
  ExpectDate(2461100.5, 2026, 3, 1.0);
}

// Ten seconds before midnight.
TEST(JdToDate, EndsAMonthAtItsLastMidnight) {
  constexpr double kFirstOfFebruary2026 = 2461072.5;
  const CalendarDate first = DateOf(kFirstOfFebruary2026);
  EXPECT_EQ(first.month, 2);
  EXPECT_EQ(first.day, 1.0);
  const CalendarDate before = DateOf(kFirstOfFebruary2026 - 10.0 / 86400.0);
  EXPECT_EQ(before.month, 1);
  EXPECT_NEAR(before.day, 32.0 - 10.0 / 86400.0, 1e-8);
  EXPECT_LT(before.day, 32.0);
}

TEST(JdToDate, AgreesWithTheStandardLibraryFrom1582To2400) {
  ForEveryGregorianDate([](const year_month_day& date, double jd) {
    for (const double fraction : {0.0, 0.5, 0.984375}) {
      const CalendarDate found = DateOf(jd + fraction);
      ASSERT_EQ(found.year, Year(date)) << jd;
      ASSERT_EQ(found.month, static_cast<int>(Month(date))) << jd;
      ASSERT_EQ(found.day, Day(date) + fraction) << jd;
    }
  });
}

TEST(JdToDate, UndoesCalcJdThroughAllAges) {
  for (double jd = 0.25; jd < 3000000.0; jd += 101.0) {
    const CalendarDate date = DateOf(jd);
    ASSERT_EQ(CalcJd(date.year, date.month, date.day), jd)
        << date.year << '-' << date.month << '-' << date.day;
    ASSERT_GE(date.month, 1);
    ASSERT_LE(date.month, 12);
    ASSERT_GE(date.day, 1.0);
    ASSERT_LT(date.day, 32.0);
  }
}
