// SPDX-License-Identifier: MIT
// The texts of angles. A text is first brought to plain signs, then read as a sign and one to
// three numbers, and only then judged as right ascension or declination.
#include "console/angle_text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <system_error>
#include <utility>

namespace velquinctl {
namespace {

constexpr int kMaxParts = 3;

/// An angle as it was written: a sign and up to three numbers.
struct WrittenAngle {
  bool negative = false;
  int count = 0;
  double parts[kMaxParts] = {};
  char firstUnit = 0;  ///< 'h', 'd', ':' (also for blanks) or 0 for none
};

bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

std::string_view Trimmed(std::string_view text) {
  const auto first = text.find_first_not_of(" \t");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::string WithPlainSigns(std::string_view text) {
  static constexpr std::pair<std::string_view, char> kSigns[] = {
      {"\u2212", '-'}, {"\u00b0", 'd'}, {"\u2032", 'm'}, {"\u2033", 's'}, {"'", 'm'}, {"\"", 's'},
  };
  std::string plain(Trimmed(text));
  for (const auto& [sign, letter] : kSigns) {
    for (auto at = plain.find(sign); at != std::string::npos; at = plain.find(sign, at + 1))
      plain.replace(at, sign.size(), 1, letter);
  }
  return plain;
}

/// Takes digits with at most one point off the front of `rest`.
bool TakeNumber(std::string_view& rest, double& value, bool& whole) {
  size_t length = 0;
  size_t digits = 0;
  whole = true;
  for (; length < rest.size(); ++length) {
    if (IsDigit(rest[length])) {
      ++digits;
    } else if (rest[length] == '.' && whole) {
      whole = false;
    } else {
      break;
    }
  }
  if (digits == 0) return false;
  const std::string_view number = rest.substr(0, length);
  const auto read = std::from_chars(number.data(), number.data() + number.size(), value,
                                    std::chars_format::fixed);
  rest.remove_prefix(length);
  return read.ec == std::errc();
}

/// Takes a sign, if there is one, off the front of `rest`. @return true for a minus.
bool TakeSign(std::string_view& rest) {
  if (rest.empty() || (rest[0] != '+' && rest[0] != '-')) return false;
  const bool negative = rest[0] == '-';
  rest.remove_prefix(1);
  return negative;
}

void SkipBlanks(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
}

/// Takes what stands after the number with this index. @return false when it may not stand there.
bool TakeUnit(std::string_view& rest, int index, char& firstUnit) {
  if (rest.empty()) return true;
  const char unit = rest[0] == ' ' ? ':' : rest[0];
  rest.remove_prefix(1);
  SkipBlanks(rest);
  if (unit == ':') {
    if (index == 0) firstUnit = ':';
    return firstUnit == ':' && !rest.empty() && index < kMaxParts - 1;
  }
  if (index == 0) {
    firstUnit = unit;
    return unit == 'h' || unit == 'd';
  }
  return firstUnit != ':' && unit == (index == 1 ? 'm' : 's');
}

bool ReadWrittenAngle(std::string_view text, WrittenAngle& angle) {
  const std::string plain = WithPlainSigns(text);
  std::string_view rest = plain;
  angle.negative = TakeSign(rest);
  while (!rest.empty()) {
    bool whole = false;
    if (angle.count == kMaxParts || !TakeNumber(rest, angle.parts[angle.count], whole))
      return false;
    if (!TakeUnit(rest, angle.count, angle.firstUnit)) return false;
    ++angle.count;
    if (!whole && !rest.empty()) return false;
  }
  // Two numbers need something between them that says what they are.
  return angle.count > 0 && (angle.count == 1 || angle.firstUnit != 0);
}

bool PartsBelow60(const WrittenAngle& angle) {
  return angle.parts[1] < 60 && angle.parts[2] < 60;
}

double Magnitude(const WrittenAngle& angle) {
  return angle.parts[0] + angle.parts[1] / 60.0 + angle.parts[2] / 3600.0;
}

std::string Quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

}  // namespace

bool ParseRightAscension(std::string_view text, double& raDegrees, std::string& error) {
  WrittenAngle angle;
  if (!ReadWrittenAngle(text, angle)) {
    error = Quoted(text) +
            " is not a right ascension (write 5h34m31.9s, 05:34:31.9, or degrees: 83.633)";
    return false;
  }
  if (!PartsBelow60(angle)) {
    error = Quoted(text) + " is not a right ascension: minutes and seconds must be less than 60";
    return false;
  }
  const bool hours = angle.firstUnit == 'h' || angle.firstUnit == ':';
  const double degrees = Magnitude(angle) * (hours ? 15.0 : 1.0);
  if (angle.negative || degrees >= 360.0) {
    error =
        Quoted(text) +
        " is not a right ascension: it must be at least 0h and less than 24h (0 to 360 degrees)";
    return false;
  }
  raDegrees = degrees;
  return true;
}

bool ParseDeclination(std::string_view text, double& decDegrees, std::string& error) {
  WrittenAngle angle;
  if (!ReadWrittenAngle(text, angle) || angle.firstUnit == 'h') {
    error =
        Quoted(text) + " is not a declination (write +22d00m52s, -5:12:00, or degrees: 22.0145)";
    return false;
  }
  if (!PartsBelow60(angle)) {
    error = Quoted(text) + " is not a declination: minutes and seconds must be less than 60";
    return false;
  }
  const double degrees = Magnitude(angle);
  if (degrees > 90.0) {
    error = Quoted(text) + " is not a declination: it must be from -90 to +90 degrees";
    return false;
  }
  decDegrees = angle.negative ? -degrees : degrees;
  return true;
}

bool ParseNumber(std::string_view text, double& value) {
  const std::string plain = WithPlainSigns(text);
  std::string_view rest = plain;
  const bool negative = TakeSign(rest);
  bool whole = false;
  double magnitude = 0.0;
  if (!TakeNumber(rest, magnitude, whole) || !rest.empty()) return false;
  value = negative ? -magnitude : magnitude;
  return true;
}

std::string FormatRightAscension(double raDegrees) {
  constexpr long long kPerSecond = 100;
  constexpr long long kPerDay = 24LL * 3600 * kPerSecond;
  long long units = std::llround(raDegrees / 15.0 * 3600.0 * kPerSecond) % kPerDay;
  if (units < 0) units += kPerDay;
  const int fraction = static_cast<int>(units % kPerSecond);
  const int seconds = static_cast<int>(units / kPerSecond);
  char text[32];
  std::snprintf(text, sizeof text, "%02dh%02dm%02d.%02ds", seconds / 3600, seconds / 60 % 60,
                seconds % 60, fraction);
  return text;
}

std::string FormatDeclination(double decDegrees) {
  constexpr long long kPerSecond = 10;
  const long long units = std::llround(std::fabs(decDegrees) * 3600.0 * kPerSecond);
  const char sign = decDegrees < 0 && units != 0 ? '-' : '+';
  const int fraction = static_cast<int>(units % kPerSecond);
  const int seconds = static_cast<int>(units / kPerSecond);
  char text[32];
  std::snprintf(text, sizeof text, "%c%02dd%02dm%02d.%ds", sign, seconds / 3600, seconds / 60 % 60,
                seconds % 60, fraction);
  return text;
}

std::string FormatDistance(double degrees) {
  char text[32];
  if (degrees >= 1.0) {
    std::snprintf(text, sizeof text, "%.2f\u00b0", degrees);
  } else if (degrees >= 1.0 / 60.0) {
    std::snprintf(text, sizeof text, "%.1f'", degrees * 60.0);
  } else {
    std::snprintf(text, sizeof text, "%.1f\"", degrees * 3600.0);
  }
  return text;
}

}  // namespace velquinctl
