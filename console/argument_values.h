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

/// A length of time in seconds, greater than 0 and at most a week; nothing for an empty text.
std::optional<double> SecondsArgument(const std::string& what, const std::string& text);

/// A right ascension and a declination.
SkyPosition PositionArgument(const std::string& ra, const std::string& dec);

/// A host name or an IPv4 address: not empty, no blanks, no control characters, and not a position
/// such as 5h34m31.9s, which stands first when the address was forgotten.
std::string AddressArgument(const std::string& text);

/// For a command that lacks an argument: refuses a first argument that reads as a position, a
/// number or a direction, because then it is the address that is missing.
void RefuseForgottenAddress(const std::string& text);

/// A text that becomes part of a file's name: no separators, nothing that Windows forbids in names.
/// @param what how the message calls the argument, for example "--log-prefix"
std::string FileNamePartArgument(const std::string& what, const std::string& text);

/// auto, live, plain or none.
ProgressMode ProgressArgument(const std::string& text);

/// north, south, east or west.
/// @return its TelescopeDirection
int DirectionArgument(const std::string& text);

}  // namespace velquinctl
