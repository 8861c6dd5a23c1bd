// SPDX-License-Identifier: MIT
#include "console/whole_hour_zone.h"

#include <chrono>
#include <cmath>

namespace velquinctl {

SiteTime InWholeHourZone(const SiteTime& local) {
  using namespace std::chrono;
  const double zone = std::trunc(local.zone);
  const seconds shift(std::lround((zone - local.zone) * 3600.0));
  const year_month_day date{year(local.year), month(static_cast<unsigned>(local.month)),
                            day(static_cast<unsigned>(local.day))};
  const double wholeSecond = std::floor(local.second);
  const sys_seconds shifted = sys_days(date) + hours(local.hour) + minutes(local.minute) +
                              seconds(static_cast<int>(wholeSecond)) + shift;
  const auto today = floor<days>(shifted);
  const year_month_day newDate(today);
  const hh_mm_ss clock(shifted - today);
  SiteTime result = local;
  result.year = int(newDate.year());
  result.month = static_cast<int32_t>(unsigned(newDate.month()));
  result.day = static_cast<int32_t>(unsigned(newDate.day()));
  result.hour = static_cast<int32_t>(clock.hours().count());
  result.minute = static_cast<int32_t>(clock.minutes().count());
  result.second = static_cast<double>(clock.seconds().count()) + (local.second - wholeSecond);
  result.zone = zone;
  return result;
}

}  // namespace velquinctl
