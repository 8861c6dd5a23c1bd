// SPDX-License-Identifier: MIT
// Right ascension, declination and plain numbers as people write them, and back.
// Pure functions on UTF-8 text, any thread.
#pragma once

#include <string>
#include <string_view>

namespace velquinctl {

/// Reads a right ascension: 5h34m31.9s, 05:34:31.9 or "5 34 31.9" (hours), 5.575h, 83.633d, or a
/// plain decimal, which is degrees.
/// @param raDegrees receives 0 up to, but not including, 360
/// @param error receives what is wrong, one line
/// @return false, with raDegrees untouched, when the text is no right ascension.
bool ParseRightAscension(std::string_view text, double& raDegrees, std::string& error);

/// Reads a declination: +22d00m52s, -5:12:00, "-5 12 0", 22.0145 or 22.0145d; the signs of the
/// books (degree sign, primes, long minus) are understood as well.
/// @param decDegrees receives -90 to +90
/// @param error receives what is wrong, one line
/// @return false, with decDegrees untouched, when the text is no declination.
bool ParseDeclination(std::string_view text, double& decDegrees, std::string& error);

/// Reads a whole text as one decimal number: sign, digits, one point, no exponent.
/// @return false, with value untouched, for anything else.
bool ParseNumber(std::string_view text, double& value);

/// @return for example 05h34m31.90s; rounded, never 60 seconds, never 24 hours.
std::string FormatRightAscension(double raDegrees);

/// @return for example -05d12m00.0s; rounded, never 60 seconds.
std::string FormatDeclination(double decDegrees);

/// @return a distance in the unit that suits it: 12.34°, 5.2' or 0.8".
std::string FormatDistance(double degrees);

}  // namespace velquinctl
