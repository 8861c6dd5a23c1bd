// SPDX-License-Identifier: MIT
#include "simulator/civil_time.h"

#include <gtest/gtest.h>

#include <ctime>

namespace simulator {
namespace {

double Mjd(const CivilTime& time) {
  return SecondsFromCivil(time).value_or(-1.0) / 86400.0;
}

TEST(CivilTime, KnowsTheModifiedJulianDates) {
  EXPECT_EQ(Mjd({2000, 1, 1, 12, 0, 0.0}), 51544.5);
  EXPECT_EQ(Mjd({1970, 1, 1, 0, 0, 0.0}), 40587.0);
  EXPECT_EQ(Mjd({2023, 2, 25, 0, 0, 0.0}), 60000.0);
  EXPECT_NEAR(Mjd({1957, 10, 4, 19, 26, 24.0}), 36115.81, 1e-9);
}

TEST(CivilTime, ComesBackFromSeconds) {
  for (const CivilTime& time : {CivilTime{2024, 2, 29, 23, 59, 59.0},
                                {2024, 3, 1, 0, 0, 0.0},
                                {1999, 12, 31, 12, 30, 15.5},
                                {2100, 3, 1, 6, 7, 8.0}}) {
    const CivilTime back = CivilFromSeconds(*SecondsFromCivil(time));
    EXPECT_EQ(back.year, time.year);
    EXPECT_EQ(back.month, time.month);
    EXPECT_EQ(back.day, time.day);
    EXPECT_EQ(back.hour, time.hour);
    EXPECT_EQ(back.minute, time.minute);
    EXPECT_EQ(back.second, time.second);
  }
}

TEST(CivilTime, RefusesWhatNeverWas) {
  for (const CivilTime& time : {CivilTime{2023, 2, 29, 0, 0, 0.0},
                                {2100, 2, 29, 0, 0, 0.0},
                                {2024, 4, 31, 0, 0, 0.0},
                                {2024, 0, 1, 0, 0, 0.0},
                                {2024, 13, 1, 0, 0, 0.0},
                                {2024, 1, 0, 0, 0, 0.0},
                                // Kept in a byte these would be 31 and 1.
                                {1955, 10, 2079, 0, 0, 0.0},
                                {1955, 257, 1, 0, 0, 0.0},
                                {2024, 1, 1, 24, 0, 0.0},
                                {2024, 1, 1, 0, 60, 0.0},
                                {2024, 1, 1, 0, 0, 60.0},
                                {2024, 1, 1, -1, 0, 0.0},
                                {1899, 12, 31, 0, 0, 0.0},
                                {2200, 1, 1, 0, 0, 0.0}}) {
    EXPECT_FALSE(SecondsFromCivil(time).has_value())
        << time.year << "-" << time.month << "-" << time.day << " " << time.hour;
  }
}

TEST(CivilTime, ReadsIsoTexts) {
  EXPECT_EQ(SecondsFromIsoText("2000-01-01T12:00:00"), 51544.5 * 86400.0);
  for (const char* text : {"", "now", "2000-01-01", "2000-01-01 12:00:00", "2000-01-01T12:00:00Z",
                           "2000-1-01T12:00:00x", "2000-01-01T12:00:-1", "2000-02-30T00:00:00",
                           "200a-01-01T00:00:00"}) {
    EXPECT_FALSE(SecondsFromIsoText(text).has_value()) << text;
  }
}

TEST(CivilTime, OfTheSystemAgreesWithItsTimeFunction) {
  EXPECT_NEAR(SystemUtcSeconds() - 40587.0 * 86400.0, static_cast<double>(std::time(nullptr)), 2.0);
}

}  // namespace
}  // namespace simulator
