// SPDX-License-Identifier: MIT
// The clock and the time zone that this machine is set to. Any thread.
#pragma once

#include "include/telescope_api.h"

namespace velquinctl {

/// @return hours east of universal time, daylight saving included.
double MachineZoneHours();

/// @return the time now, in the zone given in hours east of universal time.
SiteTime MachineTime(double zoneHours);

}  // namespace velquinctl
