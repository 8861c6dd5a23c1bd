// SPDX-License-Identifier: MIT
// The six date and angle functions under their plain names.
#include <gtest/gtest.h>

#include "api/velquin_util.h"
#include "tests/dll/driver_library.h"

namespace {

class DateFunctions : public testing::Test {
 protected:
  DriverLibrary driver;
};

TEST_F(DateFunctions, ConvertDates) {
  const auto calcJd = driver.Find<decltype(&CalcJd)>("CalcJd");
  const auto getMjd = driver.Find<decltype(&GetMjd)>("GetMjd");
  const auto jdToDate = driver.Find<decltype(&JdToDate)>("JdToDate");
  EXPECT_EQ(calcJd(2000.0, 1.0, 1.5), 2451545.0);
  EXPECT_EQ(calcJd(1957.0, 10.0, 4.81), 2436116.31);
  EXPECT_EQ(getMjd(2451545.0), 51544.5);
  int32_t year = 0;
  int32_t month = 0;
  double day = 0.0;
  jdToDate(2451545.0, &year, &month, &day);
  EXPECT_EQ(year, 2000);
  EXPECT_EQ(month, 1);
  EXPECT_EQ(day, 1.5);
}

TEST_F(DateFunctions, ConvertAngles) {
  const auto hourTo60 = driver.Find<decltype(&HourTo60)>("HourTo60");
  const auto fold = driver.Find<decltype(&degmal)>("degmal");
  const auto clamp = driver.Find<decltype(&degmal2)>("degmal2");
  HourMinSec time = {};
  hourTo60(-1.5, &time);
  EXPECT_EQ(time.nHour, -2);
  EXPECT_EQ(time.nMin, 30);
  EXPECT_EQ(time.dSec, 0.0);
  EXPECT_EQ(fold(-90.0), 270.0);
  EXPECT_EQ(fold(720.0), 0.0);
  EXPECT_EQ(clamp(350.0), -10.0);
  EXPECT_EQ(clamp(170.0), 90.0);
}

}  // namespace
