// SPDX-License-Identifier: MIT
// Time zones as the controller takes them. Pure, any thread.
#pragma once

#include "include/telescope_api.h"

namespace velquinctl {

/// The same moment in the zone that is left when the part of an hour is cut off, towards zero. The
/// driver cuts it off and leaves the local time, so that universal time would be wrong by that
/// part.
/// @param local a date that exists, years 1 to 9999
SiteTime InWholeHourZone(const SiteTime& local);

}  // namespace velquinctl
