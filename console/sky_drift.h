// SPDX-License-Identifier: MIT
// What the sky does to a mount that stands still. Pure, any thread.
#pragma once

#include "console/sky_position.h"

namespace velquinctl {

/// How fast right ascension grows on a mount that stands still: one turn in a sidereal day.
inline constexpr double kSiderealDegreesPerSecond = 360.0 / 86164.0905;

/// Whether a mount without tracking can have told these two positions without having moved: its
/// declination stays, and its right ascension grows by a second of time in a second (15.04"). What
/// is up to twice as fast counts as well, for clocks that run ahead.
/// @param seconds between the two; the first may be half a second older
bool IsSkyDrift(const SkyPosition& from, const SkyPosition& to, double seconds);

}  // namespace velquinctl
