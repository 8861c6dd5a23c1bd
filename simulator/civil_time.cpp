// SPDX-License-Identifier: MIT
#include "simulator/civil_time.h"

#include <chrono>
#include <cmath>

namespace simulator {

namespace {

using std::chrono::sys_days;
using std::chrono::year_month_day;

constexpr double kSecondsPerDay = 86400.0;
constexpr sys_days kDayZero{std::chrono::year{1858} / 11 / 17};

/// Reads `count` decimal digits at `start`; -1 when one of them is none.
int Digits(std::string_view text, size_t start, size_t count) {
  int value = 0;
  for (size_t i = start; i < start + count; ++i) {
    if (text[i] < '0' || text[i] > '9') return -1;
    value = value * 10 + (text[i] - '0');
  }
  return value;
}

}  // namespace

std::optional<double> SecondsFromCivil(const CivilTime& time) {
  if (time.year < 1900 || time.year > 2199) return std::nullopt;
  // The calendar's own types keep a byte each and would take 257 for 1.
  if (time.month < 1 || time.month > 12 || time.day < 1 || time.day > 31) return std::nullopt;
  if (time.hour < 0 || time.hour > 23 || time.minute < 0 || time.minute > 59) return std::nullopt;
  if (!(time.second >= 0.0 && time.second < 60.0)) return std::nullopt;
  const year_month_day date{std::chrono::year{time.year},
                            std::chrono::month{static_cast<unsigned>(time.month)},
                            std::chrono::day{static_cast<unsigned>(time.day)}};
  if (!date.ok()) return std::nullopt;
  const auto days = (sys_days{date} - kDayZero).count();
  return static_cast<double>(days) * kSecondsPerDay + time.hour * 3600 + time.minute * 60 +
         time.second;
}

CivilTime CivilFromSeconds(double seconds) {
  const double days = std::floor(seconds / kSecondsPerDay);
  const double ofDay = seconds - days * kSecondsPerDay;
  const year_month_day date{kDayZero + std::chrono::days{static_cast<int>(days)}};
  const int wholeMinutes = static_cast<int>(ofDay / 60.0);
  return {static_cast<int>(date.year()),
          static_cast<int>(static_cast<unsigned>(date.month())),
          static_cast<int>(static_cast<unsigned>(date.day())),
          wholeMinutes / 60,
          wholeMinutes % 60,
          ofDay - wholeMinutes * 60.0};
}

std::optional<double> SecondsFromIsoText(std::string_view text) {
  constexpr std::string_view kPattern = "0000-00-00T00:00:00";
  if (text.size() != kPattern.size()) return std::nullopt;
  for (size_t i = 0; i < text.size(); ++i) {
    if (kPattern[i] != '0' && text[i] != kPattern[i]) return std::nullopt;
  }
  return SecondsFromCivil({Digits(text, 0, 4), Digits(text, 5, 2), Digits(text, 8, 2),
                           Digits(text, 11, 2), Digits(text, 14, 2),
                           static_cast<double>(Digits(text, 17, 2))});
}

double SystemUtcSeconds() {
  const auto since = std::chrono::system_clock::now() - kDayZero;
  return std::chrono::duration<double>(since).count();
}

}  // namespace simulator
