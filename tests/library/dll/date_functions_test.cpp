// SPDX-License-Identifier: MIT
// The six date and angle functions under their plain names.
#include <gtest/gtest.h>

#include "tests/support/driver_library.h"

namespace {

class DateFunctions : public testing::Test {
 protected:
  const DriverLibrary driver;
};

TEST_F(DateFunctions, ConvertDates) {
  EXPECT_EQ(driver.CalcJd(2000.0, 1.0, 1.5), 2451545.0);
  EXPECT_EQ(driver.CalcJd(1957.0, 10.0, 4.81), 2436116.31);
  EXPECT_EQ(driver.GetMjd(2451545.0), 51544.5);
  int32_t year = 0;
  int32_t month = 0;
  double day = 0.0;
  driver.JdToDate(2451545.0, &year, &month, &day);
  EXPECT_EQ(year, 2000);
  EXPECT_EQ(month, 1);
  EXPECT_EQ(day, 1.5);
}

TEST_F(DateFunctions, ConvertAngles) {
  HourMinSec time = {};
  driver.HourTo60(-1.5, &time);
  EXPECT_EQ(time.nHour, -2);
  EXPECT_EQ(time.nMin, 30);
  EXPECT_EQ(time.dSec, 0.0);
  EXPECT_EQ(driver.degmal(-90.0), 270.0);
  EXPECT_EQ(driver.degmal(720.0), 0.0);
  EXPECT_EQ(driver.degmal2(350.0), -10.0);
  EXPECT_EQ(driver.degmal2(170.0), 90.0);
}

}  // namespace
