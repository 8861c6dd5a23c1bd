// SPDX-License-Identifier: MIT
// Operating-system seam: the two clocks that the driver reads. Any thread.
#pragma once

#include <cstdint>
#include <ctime>

namespace platform {

/// Milliseconds of wall time since this process started (the Windows runtime's `clock`).
int32_t ProcessClockMs();

/// Breaks a time (seconds since 1970-01-01 UTC) down into local time.
/// @return false when the system cannot convert it; `local` is then undefined.
bool LocalTime(int64_t secondsSince1970, std::tm& local);

}  // namespace platform
