// SPDX-License-Identifier: MIT
// Right ascensions, declinations and numbers, as people write them.
#include "console/angle_text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

namespace velquinctl {
namespace {

constexpr double kTiny = 1e-9;

/// @return the right ascension in degrees; NaN when the text is refused.
double Ra(const std::string& text) {
  double degrees = 0.0;
  std::string error;
  if (ParseRightAscension(text, degrees, error)) return degrees;
  EXPECT_NE(error.find(text), std::string::npos) << "the message should quote the text: " << error;
  return NAN;
}

double Dec(const std::string& text) {
  double degrees = 0.0;
  std::string error;
  if (ParseDeclination(text, degrees, error)) return degrees;
  EXPECT_NE(error.find(text), std::string::npos) << "the message should quote the text: " << error;
  return NAN;
}

TEST(RightAscension, IsReadInHoursWhenItIsSexagesimal) {
  const double crab = (5 + 34 / 60.0 + 31.9 / 3600.0) * 15.0;
  for (const char* text : {"5h34m31.9s", "05h34m31.9s", "5h34m31.9", "05:34:31.9", "5:34:31.9",
                           "5 34 31.9", "5h 34m 31.9s", " 5h34m31.9s ", "+5:34:31.9"})
    EXPECT_NEAR(Ra(text), crab, kTiny) << text;
}

TEST(RightAscension, MayStopAtAnyPart) {
  EXPECT_NEAR(Ra("5h"), 75.0, kTiny);
  EXPECT_NEAR(Ra("5.575h"), 83.625, kTiny);
  EXPECT_NEAR(Ra("5h34m"), 83.5, kTiny);
  EXPECT_NEAR(Ra("5h34.5m"), 83.625, kTiny);
  EXPECT_NEAR(Ra("5:34"), 83.5, kTiny);
}

TEST(RightAscension, IsReadInDegreesWhenItIsDecimal) {
  EXPECT_NEAR(Ra("83.633"), 83.633, kTiny);
  EXPECT_NEAR(Ra("83.633d"), 83.633, kTiny);
  EXPECT_NEAR(Ra("83d37m58.8s"), 83.633, kTiny);
  EXPECT_NEAR(Ra("0"), 0.0, kTiny);
  EXPECT_NEAR(Ra("359.999999"), 359.999999, kTiny);
}

TEST(RightAscension, StaysBelowAFullTurn) {
  for (const char* text : {"24h", "24:00:00", "360", "360.0d", "-1h", "-0:00:01", "1000000",
                           "99999999999999999999999999999999999999"})
    EXPECT_TRUE(std::isnan(Ra(text))) << text;
}

TEST(Declination, KeepsItsSign) {
  EXPECT_NEAR(Dec("+22d00m52s"), 22 + 52 / 3600.0, kTiny);
  EXPECT_NEAR(Dec("22:00:52"), 22 + 52 / 3600.0, kTiny);
  EXPECT_NEAR(Dec("-5:12:00"), -5.2, kTiny);
  EXPECT_NEAR(Dec("-5 12 0"), -5.2, kTiny);
  EXPECT_NEAR(Dec("-5d12m"), -5.2, kTiny);
  EXPECT_NEAR(Dec("-5.2"), -5.2, kTiny);
  EXPECT_NEAR(Dec("22.0145d"), 22.0145, kTiny);
  EXPECT_NEAR(Dec("-0:30:00"), -0.5, kTiny);
  EXPECT_NEAR(Dec("-.5"), -0.5, kTiny);
}

TEST(Declination, UnderstandsTheSignsOfBooks) {
  EXPECT_NEAR(Dec("\u22125\u00b012\u203200\u2033"), -5.2, kTiny);
  EXPECT_NEAR(Dec("+22\u00b000'52\""), 22 + 52 / 3600.0, kTiny);
}

TEST(Declination, EndsAtThePoles) {
  EXPECT_NEAR(Dec("90"), 90.0, kTiny);
  EXPECT_NEAR(Dec("-90:00:00"), -90.0, kTiny);
  for (const char* text : {"90.0001", "-90:00:01", "91", "5h", "5h30m"})
    EXPECT_TRUE(std::isnan(Dec(text))) << text;
}

TEST(Angles, RefuseWhatIsNone) {
  for (const char* text :
       {"",     " ",           "-",       "+",     "north",   "nan",       "inf",    "1e2",
        "0x10", "5h34m31.9sx", "5::34",   "5:34:", ":5",      "5:34:31:9", "5h31s",  "5m",
        "5s",   "5.5h30m",     "5:3.5:1", "5 .",   ".",       "1.2.3",     "5d5h",   "5h34:31",
        "--5",  "5 h",         "5,5",     "5:60",  "5:59:60", "5h60m",     "5h0m60s"}) {
    EXPECT_TRUE(std::isnan(Ra(text))) << text;
    EXPECT_TRUE(std::isnan(Dec(text))) << text;
  }
}

TEST(Angles, ARefusedTextLeavesTheValueAlone) {
  double degrees = 12.5;
  std::string error;
  EXPECT_FALSE(ParseRightAscension("24h", degrees, error));
  EXPECT_FALSE(ParseDeclination("91", degrees, error));
  EXPECT_FALSE(ParseNumber("x", degrees));
  EXPECT_EQ(degrees, 12.5);
}

TEST(Numbers, AreWholeTextsWithoutExponent) {
  double value = 0.0;
  EXPECT_TRUE(ParseNumber("-12.5", value));
  EXPECT_EQ(value, -12.5);
  EXPECT_TRUE(ParseNumber("+3", value));
  EXPECT_EQ(value, 3.0);
  for (const char* text : {"", "-", "1x", "1 2", "1e3", "nan", "inf", "0x1", "1.2.3", "5'"})
    EXPECT_FALSE(ParseNumber(text, value)) << text;
  EXPECT_FALSE(ParseNumber(std::string(400, '9'), value)) << "larger than any number";
}

TEST(Printing, RoundsWithoutEverShowing60Seconds) {
  EXPECT_EQ(FormatRightAscension(83.6329166667), "05h34m31.90s");
  EXPECT_EQ(FormatRightAscension(0.0), "00h00m00.00s");
  EXPECT_EQ(FormatRightAscension(14.99999999), "01h00m00.00s");
  EXPECT_EQ(FormatRightAscension(359.99999999), "00h00m00.00s");
  EXPECT_EQ(FormatDeclination(22.0144444), "+22d00m52.0s");
  EXPECT_EQ(FormatDeclination(-5.2), "-05d12m00.0s");
  EXPECT_EQ(FormatDeclination(-0.5), "-00d30m00.0s");
  EXPECT_EQ(FormatDeclination(-1e-9), "+00d00m00.0s");
  EXPECT_EQ(FormatDeclination(89.99999999), "+90d00m00.0s");
}

TEST(Printing, WhatIsPrintedIsReadBack) {
  for (double degrees = 0.0; degrees < 360.0; degrees += 0.7531) {
    EXPECT_NEAR(Ra(FormatRightAscension(degrees)), degrees, 0.0051 / 240.0);
    const double dec = degrees / 2.0 - 90.0;
    EXPECT_NEAR(Dec(FormatDeclination(dec)), dec, 0.051 / 3600.0);
  }
}

TEST(Printing, DistancesChooseTheirUnit) {
  EXPECT_EQ(FormatDistance(12.345), "12.35\u00b0");
  EXPECT_EQ(FormatDistance(0.5), "30.0'");
  EXPECT_EQ(FormatDistance(0.01), "36.0\"");
  EXPECT_EQ(FormatDistance(0.0), "0.0\"");
}

}  // namespace
}  // namespace velquinctl
