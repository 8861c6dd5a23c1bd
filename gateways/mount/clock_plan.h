// SPDX-License-Identifier: MIT
// When and with which words the controller's clock is set. The controller is told whole minutes, so
// it is told at the very beginning of one. Pure functions; any thread.
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

/// @param shortest a minute that begins sooner than this is left out
/// @param zoneHours local time minus universal time
ClockHandOver NextFullMinute(UtcTime now, std::chrono::nanoseconds shortest, int zoneHours);

/// @return the Modified Julian Date, days.
double MjdOf(UtcTime time);

/// @return true when two clocks differ by a minute or more, so that the controller has to be
///         initialised again after its clock was set; also when one of them is not a number.
bool ClocksDiffer(double controllerMjd, double rightMjd);

}  // namespace velquin
