// SPDX-License-Identifier: MIT
#include "gateways/mount/clock_plan.h"

#include <cmath>

namespace velquin {

using std::chrono::days;
using std::chrono::duration_cast;
using std::chrono::hours;
using std::chrono::minutes;
using std::chrono::nanoseconds;

ClockHandOver NextFullMinute(UtcTime now, nanoseconds shortest, int zoneHours) {
  const auto minute = std::chrono::ceil<minutes>(now + shortest);
  const auto local = minute + hours(zoneHours);
  const auto midnight = std::chrono::floor<days>(local);
  const std::chrono::year_month_day date(midnight);
  const auto ofDay = duration_cast<minutes>(local - midnight);
  ClockHandOver handOver = {};
  handOver.wait = minute - now;
  handOver.local.year = static_cast<int>(date.year());
  handOver.local.month = static_cast<int32_t>(static_cast<unsigned>(date.month()));
  handOver.local.day = static_cast<int32_t>(static_cast<unsigned>(date.day()));
  handOver.local.hour = static_cast<int32_t>(ofDay.count() / 60);
  handOver.local.minute = static_cast<int32_t>(ofDay.count() % 60);
  handOver.local.zone = zoneHours;
  return handOver;
}

double MjdOf(UtcTime time) {
  constexpr double kMjdOf1970 = 40587.0;
  using Days = std::chrono::duration<double, std::ratio<86400>>;
  return kMjdOf1970 + Days(time.time_since_epoch()).count();
}

bool ClocksDiffer(double controllerMjd, double rightMjd) {
  constexpr double kMinute = 1.0 / 1440.0;
  return !(std::fabs(controllerMjd - rightMjd) < kMinute);
}

}  // namespace velquin
