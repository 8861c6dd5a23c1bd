// SPDX-License-Identifier: MIT
// Clock and zone of Windows.
#include "console/machine_clock.h"

#include <windows.h>

#include <chrono>

namespace velquinctl {

double MachineZoneHours() {
  TIME_ZONE_INFORMATION zone = {};
  const DWORD season = GetTimeZoneInformation(&zone);
  LONG biasMinutes = zone.Bias;
  if (season == TIME_ZONE_ID_DAYLIGHT) biasMinutes += zone.DaylightBias;
  if (season == TIME_ZONE_ID_STANDARD) biasMinutes += zone.StandardBias;
  return (0 - biasMinutes) / 60.0;
}

SiteTime MachineTime(double zoneHours) {
  using namespace std::chrono;
  const auto now = time_point_cast<milliseconds>(
      system_clock::now() +
      duration_cast<milliseconds>(duration<double, hours::period>(zoneHours)));
  const auto day = floor<days>(now);
  const year_month_day date(day);
  const hh_mm_ss clock(now - day);
  SiteTime time = {};
  time.year = int(date.year());
  time.month = static_cast<int32_t>(unsigned(date.month()));
  time.day = static_cast<int32_t>(unsigned(date.day()));
  time.hour = static_cast<int32_t>(clock.hours().count());
  time.minute = static_cast<int32_t>(clock.minutes().count());
  time.second = duration<double>(clock.seconds() + clock.subseconds()).count();
  time.zone = zoneHours;
  return time;
}

}  // namespace velquinctl
