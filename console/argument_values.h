// SPDX-License-Identifier: MIT
// Turns single arguments into values, or tells in one line why not. Pure, any thread; every
// function throws Failure with kWrongUsage.
#pragma once

#include <optional>
#include <string>

#include "console/progress_line.h"
#include "console/sky_position.h"

namespace velquinctl {

/// @param what how the message calls the argument, for example "--zone"
/// @return the number, which lies between low and high (both allowed).
double NumberArgument(const std::string& what, const std::string& text, double low, double high);

/// As NumberArgument, for a whole number.
int WholeArgument(const std::string& what, const std::string& text, int low, int high);

/// A length of time in seconds, above 0 and at most a week; nothing when the text is empty.
std::optional<double> SecondsArgument(const std::string& what, const std::string& text);

/// A right ascension and a declination.
SkyPosition PositionArgument(const std::string& ra, const std::string& dec);

/// A host name or an IPv4 address: not empty, no blanks, no control characters.
std::string AddressArgument(const std::string& text);

/// auto, live, plain or none.
ProgressMode ProgressArgument(const std::string& text);

/// @return 1 north, 2 south, 3 east, 4 west, as the driver counts.
int DirectionArgument(const std::string& text);

}  // namespace velquinctl
