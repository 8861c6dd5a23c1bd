// SPDX-License-Identifier: MIT
// Date arithmetic for the clock commands.
#include <cmath>

#include "core/protocol/vq_ctrl_w.h"
#include "core/util/truncate.h"
#include "include/velquin_util.h"

namespace {

constexpr double kSecondsPerDay = 86400.0;

double SecondsOfDay(const SiteTime& time) {
  return time.hour * 3600.0 + time.minute * 60.0 + time.second;
}

// Reduces seconds to one day. @return the days carried.
int32_t CarryDays(double& seconds) {
  if (seconds >= kSecondsPerDay) {
    const int32_t days = TruncateToInt32(seconds / kSecondsPerDay);
    seconds = std::fmod(seconds, kSecondsPerDay);
    return days;
  }
  if (seconds < 0.0) {
    const int32_t days = -TruncateToInt32(-seconds / kSecondsPerDay) - 1;
    seconds = std::fmod(seconds, kSecondsPerDay) + kSecondsPerDay;
    return days;
  }
  return 0;
}

void SetTimeOfDay(SiteTime& time, double seconds) {
  time.hour = TruncateToInt32(seconds / 3600.0);
  time.minute = TruncateToInt32(seconds / 60.0) - 60 * time.hour;
  time.second = seconds - time.hour * 3600.0 - time.minute * 60.0;
}

// Moves a date by whole months and years.
void AddMonthsAndYears(SiteTime& date, int32_t months, int32_t years) {
  int32_t month = date.month + months;
  if (month < 1) {
    const int32_t q = month / 12;
    date.year += -1 - q;
    month = month - 12 * q + 12;
  }
  if (month > 12) {
    date.year += month / 12;
    month = (month - 1) - 12 * ((month - 1) / 12) + 1;
  }
  date.month = month;
  date.year += years;
}

// The day after 4 October 1582 was the 15th.
void SkipCalendarReform(SiteTime& date) {
  if (date.year != 1582 || date.month != 10) return;
  if (date.day >= 5 && date.day <= 9) date.day = 4;
  if (date.day >= 10 && date.day <= 14) date.day = 15;
}

}  // namespace

void CVQCtrlW::AddDateTime(SiteTime& time, const SiteTime& offset, int32_t subtract) {
  const int32_t sign = subtract ? -1 : 1;
  double seconds = SecondsOfDay(time) + sign * SecondsOfDay(offset);
  const int32_t carry = CarryDays(seconds);
  SetTimeOfDay(time, seconds);

  SiteTime date = {time.year, time.month, time.day, 12, 0, 0.0, 0.0};
  JdToDateTime(DateTimeToJd(date) + carry + sign * offset.day, date);
  AddMonthsAndYears(date, sign * offset.month, sign * offset.year);
  SkipCalendarReform(date);
  // Converting to a Julian date and back turns a day that its month does not have into one of the
  // next month.
  JdToDateTime(DateTimeToJd(date), date);
  time.year = date.year;
  time.month = date.month;
  time.day = date.day;
}

double CVQCtrlW::DateTimeToJd(const SiteTime& time) {
  const double day =
      time.day + time.hour / 24.0 + time.minute / 1440.0 + time.second / 86400.0 - time.zone / 24.0;
  return CalcJd(time.year, time.month, day);
}

void CVQCtrlW::JdToDateTime(double jd, SiteTime& time) {
  double day = 0.0;
  JdToDate(jd, &time.year, &time.month, &day);
  time.day = TruncateToInt32(day);
  double fraction = day - time.day;
  time.hour = TruncateToInt32(fraction * 24.0);
  fraction -= time.hour / 24.0;
  time.minute = TruncateToInt32(fraction * 24.0 * 60.0);
  time.second = (fraction - time.minute / 24.0 / 60.0) * 24.0 * 60.0 * 60.0;
}
