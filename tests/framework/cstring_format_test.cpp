// SPDX-License-Identifier: MIT
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cfloat>
#include <climits>
#include <cmath>
#include <cstdio>
#include <functional>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "framework/base/cstring.h"
#include "tests/framework/comma_locale.h"

namespace {

using testing::StartsWith;

// The runtime library's own answer; in a test that has not changed the locale.
__attribute__((format(printf, 1, 2))) std::string Printed(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  char text[1024];
  std::vsnprintf(text, sizeof text, format, arguments);
  va_end(arguments);
  return text;
}

__attribute__((format(printf, 1, 2))) std::string Formatted(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  CString text;
  text.FormatV(format, arguments);
  va_end(arguments);
  EXPECT_EQ(static_cast<size_t>(text.GetLength()), std::string(text).size());
  return text.GetString();
}

std::vector<double> InterestingDoubles() {
  std::vector<double> numbers = {0.0,   -0.0,   0.5,     -0.5,   1.0,     -1.0,     0.05,
                                 59.95, 59.999, 59.9999, 23.996, -89.995, 359.999,  0.0000005,
                                 1e15,  1e16,   -1e100,  1e-300, DBL_MAX, -DBL_MAX, DBL_MIN};
  std::mt19937 random(5);
  std::uniform_real_distribution<double> angle(-400.0, 400.0);
  for (int i = 0; i < 200; ++i) numbers.push_back(angle(random));
  return numbers;
}

// Every way in which the driver writes a double.
#define FOR_EVERY_DOUBLE_FORMAT(CHECK) \
  CHECK("%f")                          \
  CHECK("%.6f")                        \
  CHECK("%8.3f")                       \
  CHECK("%7.3f")                       \
  CHECK("%04.1f")                      \
  CHECK("%04.3f")                      \
  CHECK("%+02.2f")                     \
  CHECK("%+02.0f")                     \
  CHECK("%-12.4f|")                    \
  CHECK("% .1f")                       \
  CHECK("%#.0f")                       \
  CHECK("%e")                          \
  CHECK("%.3e")                        \
  CHECK("%g")                          \
  CHECK("%.12g")

}  // namespace

TEST(StringFormat, WritesWholeNumbers) {
  EXPECT_EQ(Formatted("%d,%d,%d", 0, INT_MAX, INT_MIN), "0,2147483647,-2147483648");
  EXPECT_EQ(Formatted("%04d,%02d,%02d", 2026, 3, 15), "2026,03,15");
  EXPECT_EQ(Formatted("%02d|%5d|%-5d|%+d|% d|%.4d", -3, 42, 42, 42, 42, 42),
            "-3|   42|42   |+42| 42|0042");
  EXPECT_EQ(Formatted("%i", -7), "-7");
  EXPECT_EQ(Formatted("%u", 4294967295u), "4294967295");
  EXPECT_EQ(Formatted("%x|%04x|%#x", 48879u, 255u, 255u), "beef|00ff|0xff");
}

TEST(StringFormat, WritesTextsAndCharacters) {
  EXPECT_EQ(Formatted("%s=%s", "$MTTGT", "1,2"), "$MTTGT=1,2");
  EXPECT_EQ(Formatted("<%s>", ""), "<>");
  EXPECT_EQ(Formatted("%5s|%-5s|%.2s|%5.1s", "abc", "abc", "abc", "abc"), "  abc|abc  |ab|    a");
  EXPECT_EQ(Formatted("%c%c%3c", 'o', 'k', '!'), "ok  !");
}

TEST(StringFormat, WritesAPercentSign) {
  EXPECT_EQ(Formatted("100%%"), "100%");
  EXPECT_EQ(Formatted("%%%d%%", 5), "%5%");
  EXPECT_EQ(Formatted("%%s%%"), "%s%");
}

TEST(StringFormat, DoesNotLookIntoTheTextsItIsGiven) {
  EXPECT_EQ(Formatted("%s", "%d %s %n %%"), "%d %s %n %%");
}

TEST(StringFormat, WritesTextsOfAnyLength) {
  const std::string longText(100000, 'x');
  EXPECT_EQ(Formatted("<%s>", longText.c_str()), "<" + longText + ">");
  EXPECT_EQ(Formatted("%d%s%d", 1, longText.c_str(), 2), "1" + longText + "2");
  EXPECT_EQ(Formatted("%.99999s", longText.c_str()), longText.substr(1));
}

TEST(StringFormat, FillsFields) {
  EXPECT_EQ(Formatted("%500s|", "abc"), std::string(497, ' ') + "abc|");
  EXPECT_EQ(Formatted("%-500s|", "abc"), "abc" + std::string(497, ' ') + "|");
  EXPECT_EQ(Formatted("%0500d|", 7), std::string(499, '0') + "7|");
  EXPECT_EQ(Formatted("%500.1f|", 2.5), std::string(497, ' ') + "2.5|");
}

// The driver has no such fields; what counts is that nothing beyond the buffers is read or written.
TEST(StringFormat, CutsWhatIsWiderThanItsBuffers) {
  const std::string blanks(3000, ' ');
  EXPECT_THAT(blanks, StartsWith(Formatted("%3000s", "abc")));
  EXPECT_THAT(blanks, StartsWith(Formatted("%3000d", 7)));
  EXPECT_THAT(blanks, StartsWith(Formatted("%3000.1f", 2.5)));
  EXPECT_THAT(Printed("%.400f", DBL_MAX), StartsWith(Formatted("%.400f", DBL_MAX)));
}

TEST(StringFormat, WritesHugeNumbersInFull) {
  const std::string largest = Formatted("%f", DBL_MAX);
  EXPECT_EQ(largest.size(), 309u + 7u);
  EXPECT_EQ(largest.substr(0, 17), "17976931348623157");
  EXPECT_EQ(largest.substr(309), ".000000");
  EXPECT_EQ(Formatted("%f", -DBL_MAX), "-" + largest);
  EXPECT_EQ(Formatted("%.6f,%.6f", DBL_MAX, 1.0), largest + ",1.000000");
}

TEST(StringFormat, WritesWhatIsNoNumber) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Formatted("%f %f", infinity, -infinity), "inf -inf");
  EXPECT_EQ(Formatted("%f", std::numeric_limits<double>::quiet_NaN()), "nan");
}

TEST(StringFormat, WritesDoublesAsTheRuntimeLibraryDoes) {
  for (const double number : InterestingDoubles()) {
#define EXPECT_AS_PRINTED(format) ASSERT_EQ(Formatted(format, number), Printed(format, number));
    FOR_EVERY_DOUBLE_FORMAT(EXPECT_AS_PRINTED)
#undef EXPECT_AS_PRINTED
  }
}

// A host may have chosen a locale with a decimal comma; the controller reads only points.
TEST(StringFormat, WritesAPointInEveryLocale) {
  const std::vector<double> numbers = InterestingDoubles();
  std::vector<std::string> expected;
  for (const double number : numbers) {
#define KEEP_PRINTED(format) expected.push_back(Printed(format, number));
    FOR_EVERY_DOUBLE_FORMAT(KEEP_PRINTED)
#undef KEEP_PRINTED
  }
  const CommaLocale german;
  ASSERT_EQ(Printed("%.1f", 2.5), "2,5") << "the locale has no effect";
  size_t next = 0;
  for (const double number : numbers) {
#define EXPECT_AS_KEPT(format) ASSERT_EQ(Formatted(format, number), expected[next++]);
    FOR_EVERY_DOUBLE_FORMAT(EXPECT_AS_KEPT)
#undef EXPECT_AS_KEPT
  }
}

TEST(StringFormat, WritesTheDriversCommandsInEveryLocale) {
  const CommaLocale german;
  EXPECT_EQ(Formatted("%s=%d,%.6f,%.6f,%s", "$MTTGT", 3, 5.575539, 22.014444, "M1, Crab"),
            "$MTTGT=3,5.575539,22.014444,M1, Crab");
  EXPECT_EQ(Formatted("$SYLOC=%8.3f,%7.3f,%d", 139.745, 35.659, 9), "$SYLOC= 139.745, 35.659,9");
  EXPECT_EQ(Formatted("$SYLTM=%04d,%02d,%02d,%02d,%02d,%04.1f", 2026, 3, 5, 21, 7, 9.04),
            "$SYLTM=2026,03,05,21,07,09.0");
  EXPECT_EQ(Formatted("$MTMV2=%f,%f,%f", 1.0, -0.5, 0.0), "$MTMV2=1.000000,-0.500000,0.000000");
  EXPECT_EQ(Formatted("ra=%02d+%04.3f&dec=%s%02d%+02.2f", 5, 34.532, "-", 22, 0.867),
            "ra=05+34.532&dec=-22+0.87");
  EXPECT_EQ(Formatted("ra=%02d+%04.1f&dec=%s%02d%+02.0f", 5, 4.5, "%2b", 2, 1.0),
            "ra=05+04.5&dec=%2b02+1");
}

TEST(StringFormat, MayUseItsOwnTextAsAnArgument) {
  CString text("ab");
  text.Format("%s-%s-%d", text.GetString(), text.GetString(), 1);
  EXPECT_STREQ(text, "ab-ab-1");
}

TEST(StringFormat, ReplacesTheTextBefore) {
  CString text("something long that was there before");
  text.Format("%d", 1);
  EXPECT_STREQ(text, "1");
  text.Format("%s", "");
  EXPECT_TRUE(text.IsEmpty());
}
