// SPDX-License-Identifier: MIT
// Dates, times and angles of numbers that are none, endless or far too large: the six functions
// that calculate give back what the headers say, and come to an end.
#include <gmock/gmock.h>

#include <climits>
#include <cmath>
#include <limits>

#include "tests/support/driver_library.h"

namespace {

using testing::IsNan;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kHuge = 1e308;

class Calculations : public testing::Test {
 protected:
  struct Date {
    int32_t year;
    int32_t month;
    double day;
  };

  Date DateOf(double jd) const {
    Date date = {-1, -1, -1.0};
    driver.JdToDate(jd, &date.year, &date.month, &date.day);
    return date;
  }
  HourMinSec TimeOf(double hours) const {
    HourMinSec time = {-1, -1, -1.0};
    driver.HourTo60(hours, &time);
    return time;
  }

  const DriverLibrary driver;
};

TEST_F(Calculations, GiveNoJulianDateOrAnEndlessOne) {
  EXPECT_THAT(driver.CalcJd(kNan, 1.0, 1.0), IsNan());
  EXPECT_THAT(driver.CalcJd(2026.0, kNan, 1.0), IsNan());
  EXPECT_THAT(driver.CalcJd(2026.0, 1.0, kNan), IsNan());
  EXPECT_THAT(driver.CalcJd(kInfinity, 1.0, 1.0), IsNan());
  EXPECT_EQ(driver.CalcJd(-kInfinity, 1.0, 1.0), -kInfinity);
  EXPECT_EQ(driver.CalcJd(kHuge, 1.0, 1.0), kInfinity);
  EXPECT_EQ(driver.CalcJd(-kHuge, 1.0, 1.0), -kInfinity);
  EXPECT_EQ(driver.CalcJd(2026.0, kHuge, 1.0), kInfinity);
  EXPECT_EQ(driver.CalcJd(2026.0, 1.0, -kHuge), -kHuge);
  EXPECT_THAT(driver.GetMjd(kNan), IsNan());
  EXPECT_EQ(driver.GetMjd(-kInfinity), -kInfinity);
  EXPECT_EQ(driver.GetMjd(kHuge), kHuge);
}

TEST_F(Calculations, KeepTheYearOfADateIn32Bits) {
  EXPECT_EQ(DateOf(kInfinity).year, 0);
  EXPECT_EQ(DateOf(-kInfinity).year, INT_MIN);
  EXPECT_EQ(DateOf(kHuge).year, INT_MAX);
  EXPECT_EQ(DateOf(-kHuge).year, INT_MIN);
  EXPECT_EQ(DateOf(8e11).year, INT_MAX);
  EXPECT_EQ(DateOf(kHuge).month, -1) << "beyond the range month and day mean nothing";
  const Date none = DateOf(kNan);
  EXPECT_EQ(none.year, 0);
  EXPECT_EQ(none.month, 0);
  EXPECT_THAT(none.day, IsNan());
}

TEST_F(Calculations, KeepTheHoursOfATimeIn32Bits) {
  const HourMinSec none = TimeOf(kNan);
  EXPECT_EQ(none.nHour, 0);
  EXPECT_EQ(none.nMin, 0);
  EXPECT_THAT(none.dSec, IsNan());
  for (const double most : {kInfinity, kHuge, 1e10}) {
    EXPECT_EQ(TimeOf(most).nHour, INT_MAX) << most;
    EXPECT_EQ(TimeOf(most).nMin, INT_MAX) << most;
    EXPECT_EQ(TimeOf(-most).nHour, INT_MIN) << most;
    EXPECT_EQ(TimeOf(-most).nMin, INT_MIN) << most;
  }
  EXPECT_EQ(TimeOf(kHuge).dSec, kInfinity);
  EXPECT_EQ(TimeOf(-kHuge).dSec, -kInfinity);
}

TEST_F(Calculations, BringAnyAngleIntoItsRange) {
  for (const double none : {kNan, kInfinity, -kInfinity}) {
    EXPECT_THAT(driver.degmal(none), IsNan()) << none;
    EXPECT_EQ(driver.degmal2(none), 90.0) << none;
  }
  for (const double angle : {kHuge, -kHuge, 1e16, -1e-300, -0.0, 2147483648.0}) {
    const double folded = driver.degmal(angle);
    EXPECT_TRUE(folded >= 0.0 && folded < 360.0) << angle << " gives " << folded;
    EXPECT_LE(std::fabs(driver.degmal2(angle)), 90.0) << angle;
  }
}

}  // namespace
