// SPDX-License-Identifier: MIT
#include "core/util/number_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "tests/framework/comma_locale.h"

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Bit by bit, so that -0.0 is not 0.0.
testing::AssertionResult SameDouble(double a, double b) {
  if (std::memcmp(&a, &b, sizeof a) == 0) return testing::AssertionSuccess();
  return testing::AssertionFailure() << a << " is not " << b;
}

// Words ("inf", "nan") and hexadecimal numbers are left out, which not all of them take.
double RuntimeDouble(const std::string& text) {
  const size_t first = text.find_first_not_of(" \t");
  const size_t digits = text.find_first_not_of("+-", first);
  if (digits != std::string::npos && std::isalpha(static_cast<unsigned char>(text[digits]))) {
    return 0.0;
  }
  if (first != std::string::npos && digits <= first + 1 && text[digits] == '0' &&
      std::tolower(static_cast<unsigned char>(text[digits + 1])) == 'x') {
    return text[first] == '-' ? -0.0 : 0.0;
  }
  char* end = nullptr;
  const double number = std::strtod(text.c_str(), &end);
  // Some runtime libraries make -0.0 of a sign without a number.
  return end == text.c_str() ? 0.0 : number;
}

int32_t RuntimeInt(const std::string& text) {
  // long has 64 bits elsewhere; there the runtime library stops later.
  const long number = std::strtol(text.c_str(), nullptr, 10);
  return static_cast<int32_t>(std::clamp<long long>(number, INT32_MIN, INT32_MAX));
}

std::string Digits(std::mt19937& random, size_t maxCount) {
  std::string digits(random() % (maxCount + 1), '0');
  for (char& c : digits) c = static_cast<char>('0' + random() % 10);
  return digits;
}

std::string RandomNumber(std::mt19937& random, size_t maxDigits, int maxExponent) {
  const char* const signs[] = {"", "-", "+"};
  std::string text = signs[random() % 3];
  text.append(random() % 2 == 0 ? 0 : random() % maxDigits, '0');
  text += Digits(random, maxDigits);
  if (random() % 4 != 0) {
    text += '.';
    text.append(random() % 2 == 0 ? 0 : random() % maxDigits, '0');
    text += Digits(random, maxDigits);
  }
  if (random() % 2 == 0) {
    text += random() % 2 == 0 ? 'e' : 'E';
    text += signs[random() % 3] + std::to_string(random() % static_cast<unsigned>(maxExponent));
  }
  return text;
}

TEST(NumberText, EndsWithItsSpan) {
  const char text[] = " +12.5e1,-7";
  const char* comma = text + 8;
  EXPECT_EQ(TextToDouble(TextSpan{text, comma}), 125.0);
  EXPECT_EQ(TextToDouble(TextSpan{text, comma - 2}), 12.5) << "the exponent lies outside";
  EXPECT_EQ(TextToDouble(TextSpan{text, text + 2}), 0.0) << "a sign alone";
  EXPECT_EQ(TextToDouble(TextSpan{text, text + 1}), 0.0) << "a blank alone";
  EXPECT_EQ(TextToDouble(TextSpan{text, text}), 0.0);
  EXPECT_EQ(TextToInt(TextSpan{text, text + 3}), 1);
  EXPECT_EQ(TextToInt(TextSpan{text, text + 2}), 0);
  EXPECT_EQ(TextToInt(TextSpan{comma + 1, comma + 2}), 0) << "a minus sign alone";
  EXPECT_EQ(TextToInt(TextSpan{comma + 1, comma + 3}), -7);
  const char huge[] = "1e99999";
  EXPECT_EQ(TextToDouble(TextSpan{huge, huge + 7}), std::numeric_limits<double>::infinity());
  EXPECT_EQ(TextToDouble(TextSpan{huge, huge + 3}), 1e9);
}

}  // namespace

TEST(TextToDouble, ReadsWhatLooksLikeANumber) {
  EXPECT_EQ(TextToDouble("12"), 12.0);
  EXPECT_EQ(TextToDouble("-2.5"), -2.5);
  EXPECT_EQ(TextToDouble("+2.5"), 2.5);
  EXPECT_EQ(TextToDouble(".5"), 0.5);
  EXPECT_EQ(TextToDouble("-.5"), -0.5);
  EXPECT_EQ(TextToDouble("5."), 5.0);
  EXPECT_EQ(TextToDouble("1e3"), 1000.0);
  EXPECT_EQ(TextToDouble("1E-3"), 0.001);
  EXPECT_TRUE(SameDouble(TextToDouble("-0"), -0.0));
}

TEST(TextToDouble, StopsAtTheFirstCharacterThatDoesNotBelong) {
  EXPECT_EQ(TextToDouble("2.5kg"), 2.5);
  EXPECT_EQ(TextToDouble("2,5"), 2.0);
  EXPECT_EQ(TextToDouble("1.2.3"), 1.2);
  EXPECT_EQ(TextToDouble("1e"), 1.0);
  EXPECT_EQ(TextToDouble("1e+"), 1.0);
  EXPECT_EQ(TextToDouble("1 2"), 1.0);
}

TEST(TextToDouble, IsZeroWhereThereIsNoNumber) {
  for (const char* text : {"", " ", "-", "+", ".", "abc", "+-5", "-+5", "--5", "- 5", "e5", "$1"}) {
    EXPECT_TRUE(SameDouble(TextToDouble(text), 0.0)) << '"' << text << '"';
  }
}

TEST(TextToDouble, IsZeroForWords) {
  for (const char* word : {"inf", "INF", "infinity", "infected", "nan", "NaN", "nan(1)", "Nancy"}) {
    const std::string text = word;
    EXPECT_TRUE(SameDouble(TextToDouble(text.c_str()), 0.0)) << text;
    EXPECT_TRUE(SameDouble(TextToDouble(("+" + text).c_str()), 0.0)) << text;
    EXPECT_TRUE(SameDouble(TextToDouble(("-" + text).c_str()), 0.0)) << text;
    EXPECT_TRUE(SameDouble(TextToDouble((" " + text).c_str()), 0.0)) << text;
  }
}

TEST(TextToDouble, IsDecimal) {
  EXPECT_TRUE(SameDouble(TextToDouble("0x1p3"), 0.0));
  EXPECT_TRUE(SameDouble(TextToDouble("-0X1F"), -0.0));
  EXPECT_EQ(TextToDouble("1f"), 1.0);
  EXPECT_EQ(TextToDouble("1p3"), 1.0);
}

TEST(TextToDouble, SkipsWhiteSpaceInFront) {
  EXPECT_EQ(TextToDouble(" \t\n\v\f\r7.5 "), 7.5);
  EXPECT_EQ(TextToDouble("\xA0"
                         "7.5"),
            0.0);
}

TEST(TextToDouble, IsInfiniteBeyondTheRange) {
  const std::string huge(400, '9');
  EXPECT_EQ(TextToDouble("1e400"), kInfinity);
  EXPECT_EQ(TextToDouble("-1e400"), -kInfinity);
  EXPECT_EQ(TextToDouble("1e99999999999999999999"), kInfinity);
  EXPECT_EQ(TextToDouble(huge.c_str()), kInfinity);
  EXPECT_EQ(TextToDouble(("-" + huge + ".5").c_str()), -kInfinity);
  // Large in spite of how they begin or end.
  EXPECT_EQ(TextToDouble(("000" + huge).c_str()), kInfinity);
  EXPECT_EQ(TextToDouble((huge + "e-5").c_str()), kInfinity);
  EXPECT_EQ(TextToDouble("0.001e500"), kInfinity);
}

TEST(TextToDouble, IsZeroBelowTheRange) {
  const std::string tiny = "." + std::string(400, '0') + "1";
  EXPECT_TRUE(SameDouble(TextToDouble("1e-400"), 0.0));
  EXPECT_TRUE(SameDouble(TextToDouble("-1e-400"), -0.0));
  EXPECT_TRUE(SameDouble(TextToDouble("1e-99999999999999999999"), 0.0));
  EXPECT_TRUE(SameDouble(TextToDouble(("0" + tiny).c_str()), 0.0));
  // Small in spite of how they begin or end.
  EXPECT_TRUE(SameDouble(TextToDouble(tiny.c_str()), 0.0));
  EXPECT_TRUE(SameDouble(TextToDouble(("-" + tiny).c_str()), -0.0));
  EXPECT_TRUE(SameDouble(TextToDouble((tiny + "e5").c_str()), 0.0));
  EXPECT_TRUE(SameDouble(TextToDouble("1000e-500"), 0.0));
}

TEST(TextToDouble, KeepsTheOutermostNumbers) {
  EXPECT_EQ(TextToDouble("1.7976931348623157e308"), std::numeric_limits<double>::max());
  EXPECT_EQ(TextToDouble("4.9406564584124654e-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(TextToDouble("0e999"), 0.0);
  EXPECT_EQ(TextToDouble("0.0e-999"), 0.0);
}

TEST(TextToDouble, AgreesWithTheRuntimeLibraryOnNumbers) {
  std::mt19937 random(1);
  for (int i = 0; i < 50000; ++i) {
    const std::string text = RandomNumber(random, 20, 40);
    ASSERT_TRUE(SameDouble(TextToDouble(text.c_str()), RuntimeDouble(text))) << text;
  }
}

TEST(TextToDouble, AgreesWithTheRuntimeLibraryAtTheEdgesOfTheRange) {
  std::mt19937 random(2);
  for (int i = 0; i < 20000; ++i) {
    const std::string text = RandomNumber(random, 350, 700);
    ASSERT_TRUE(SameDouble(TextToDouble(text.c_str()), RuntimeDouble(text))) << text;
  }
}

TEST(TextToDouble, AgreesWithTheRuntimeLibraryOnNonsense) {
  std::mt19937 random(3);
  std::vector<std::string> pieces = {"inf", "INF", "inity", "nan", "NaN", "0x", "0X1p", "nan("};
  for (const char c : std::string("0123456789+-..eE \t,$gxinfa")) pieces.emplace_back(1, c);
  for (int i = 0; i < 50000; ++i) {
    std::string text;
    for (size_t count = random() % 9; count > 0; --count) text += pieces[random() % pieces.size()];
    ASSERT_TRUE(SameDouble(TextToDouble(text.c_str()), RuntimeDouble(text))) << '"' << text << '"';
  }
}

TEST(TextToDouble, WantsAPointInEveryLocale) {
  const CommaLocale german;
  ASSERT_EQ(std::strtod("2,5", nullptr), 2.5) << "the locale has no effect";
  EXPECT_EQ(TextToDouble("2.5"), 2.5);
  EXPECT_EQ(TextToDouble("2,5"), 2.0);
  EXPECT_EQ(TextToDouble("1.5e400"), kInfinity);
}

TEST(TextToInt, ReadsDecimalDigits) {
  EXPECT_EQ(TextToInt("12"), 12);
  EXPECT_EQ(TextToInt("-12"), -12);
  EXPECT_EQ(TextToInt("+12"), 12);
  EXPECT_EQ(TextToInt("007"), 7);
  EXPECT_EQ(TextToInt(" \t\n\v\f\r7 "), 7);
}

TEST(TextToInt, StopsAtTheFirstCharacterThatDoesNotBelong) {
  EXPECT_EQ(TextToInt("12.9"), 12);
  EXPECT_EQ(TextToInt("1F"), 1);
  EXPECT_EQ(TextToInt("0x10"), 0);
  EXPECT_EQ(TextToInt("1e3"), 1);
}

TEST(TextToInt, IsZeroWhereThereIsNoNumber) {
  for (const char* text : {"", " ", "-", "+", "abc", "+-5", "-+5", "--5", "- 5", ".5", "ff"}) {
    EXPECT_EQ(TextToInt(text), 0) << '"' << text << '"';
  }
}

TEST(TextToInt, StopsAtTheBoundsOf32Bits) {
  EXPECT_EQ(TextToInt("2147483647"), INT32_MAX);
  EXPECT_EQ(TextToInt("2147483648"), INT32_MAX);
  EXPECT_EQ(TextToInt("-2147483648"), INT32_MIN);
  EXPECT_EQ(TextToInt("-2147483649"), INT32_MIN);
  EXPECT_EQ(TextToInt("99999999999999999999"), INT32_MAX);
  EXPECT_EQ(TextToInt("-99999999999999999999"), INT32_MIN);
}

TEST(TextToInt, AgreesWithTheRuntimeLibrary) {
  std::mt19937 random(4);
  const std::string characters = "00123456789+- \t.x";
  for (int i = 0; i < 50000; ++i) {
    std::string text(random() % 14, ' ');
    for (char& c : text) c = characters[random() % characters.size()];
    ASSERT_EQ(TextToInt(text.c_str()), RuntimeInt(text)) << '"' << text << '"';
  }
}
