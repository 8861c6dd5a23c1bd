// SPDX-License-Identifier: MIT
// What a mount is doing, judged from two readings: the driver tells positions and readiness, and
// nothing of motion. Pure; any thread.
#pragma once

#include <string>

#include "console/sky_position.h"

namespace velquinctl {

enum class MountMotion {
  kTracking,  ///< its coordinates stay
  kStanding,  ///< its right ascension grows with the sky's turning: it does not track
  kMoving,    ///< slowly, as by hand or by a guide pulse
  kSlewing,   ///< at kSlewDegreesPerSecond or more
};

/// A slew is far faster; the sky, also that of a hurried simulator, is slower.
inline constexpr double kSlewDegreesPerSecond = 0.15;

/// @param seconds between the two readings, above 0
MountMotion MotionBetween(const SkyPosition& from, const SkyPosition& to, double seconds);

/// @return the larger of the two axes' speeds, degrees per second.
double SpeedBetween(const SkyPosition& from, const SkyPosition& to, double seconds);

/// @return "tracking", "not tracking", "moving" or "slewing".
const char* MotionWord(MountMotion motion);

/// @return how far and in which direction each coordinate went, for people:
///         "right ascension -1.50°, declination +8.3\"".
std::string MovedText(const SkyPosition& from, const SkyPosition& to);

/// @return the difference in right ascension the short way round, degrees, positive when it grew.
double RaMovedDegrees(const SkyPosition& from, const SkyPosition& to);

}  // namespace velquinctl
