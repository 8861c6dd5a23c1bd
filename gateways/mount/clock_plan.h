// SPDX-License-Identifier: MIT
// When the controller's clock is set, and to which time. The controller accepts whole minutes, so
// the command is sent at the beginning of a minute. Pure functions; any thread.
#pragma once

#include <chrono>

#include "include/telescope_api.h"

namespace velquin {

/// Universal time.
using UtcTime = std::chrono::sys_time<std::chrono::nanoseconds>;

struct ClockHandOver {
  std::chrono::nanoseconds wait;  ///< from the given time to the full minute
  SiteTime local;                 ///< local time at that minute; its second is 0
};

/// @param shortest a minute that begins sooner than this is skipped
/// @param zoneHours local time minus universal time
ClockHandOver NextFullMinute(UtcTime now, std::chrono::nanoseconds shortest, int zoneHours);

/// @return the Modified Julian Date, days.
double MjdOf(UtcTime time);

/// @return true if two clocks differ by a minute or more, so that the controller must be
///         initialised again after its clock was set; also true if one of them is NaN.
bool ClocksDiffer(double controllerMjd, double rightMjd);

}  // namespace velquin
