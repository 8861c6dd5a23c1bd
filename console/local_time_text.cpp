// SPDX-License-Identifier: MIT
// Reads a clock text by its fixed places.
#include "console/local_time_text.h"

#include <chrono>

#include "console/angle_text.h"

namespace velquinctl {
namespace {

/// Reads the digits at [at, at + count). @return -1 when one of them is none.
int Digits(std::string_view text, size_t at, size_t count) {
  int value = 0;
  for (const char c : text.substr(at, count)) {
    if (c < '0' || c > '9') return -1;
    value = value * 10 + (c - '0');
  }
  return value;
}

bool DayExists(const SiteTime& time) {
  return std::chrono::year_month_day(std::chrono::year(time.year),
                                     std::chrono::month(static_cast<unsigned>(time.month)),
                                     std::chrono::day(static_cast<unsigned>(time.day)))
      .ok();
}

}  // namespace

std::optional<SiteTime> ParseLocalTime(std::string_view text) {
  constexpr std::string_view kShape = "dddd-dd-ddTdd:dd";
  if (text.size() < kShape.size()) return {};
  for (size_t i = 0; i < kShape.size(); ++i) {
    const bool digit = text[i] >= '0' && text[i] <= '9';
    const bool fits = kShape[i] == 'd'   ? digit
                      : kShape[i] == 'T' ? text[i] == 'T' || text[i] == ' '
                                         : text[i] == kShape[i];
    if (!fits) return {};
  }
  SiteTime time{};
  time.year = Digits(text, 0, 4);
  time.month = Digits(text, 5, 2);
  time.day = Digits(text, 8, 2);
  time.hour = Digits(text, 11, 2);
  time.minute = Digits(text, 14, 2);
  const std::string_view rest = text.substr(kShape.size());
  if (!rest.empty()) {
    const bool twoDigits = rest.size() >= 3 && rest[0] == ':' && Digits(rest, 1, 2) >= 0;
    const bool ends = rest.size() == 3 || (rest.size() > 4 && rest[3] == '.');
    if (!twoDigits || !ends || !ParseNumber(rest.substr(1), time.second)) return {};
  }
  if (!DayExists(time) || time.hour > 23 || time.minute > 59 || time.second >= 60.0) return {};
  return time;
}

}  // namespace velquinctl
