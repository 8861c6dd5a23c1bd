// SPDX-License-Identifier: MIT
// Calendar dates and clock texts for the simulated controller, on the standard library's own
// calendar so that the driver's date arithmetic is tested against another one. Any thread.
#pragma once

#include <optional>
#include <string_view>

namespace simulator {

/// A date and time of the Gregorian calendar.
struct CivilTime {
  int year;
  int month;  ///< 1 to 12
  int day;    ///< 1 to 31
  int hour;
  int minute;
  double second;  ///< 0 (included) to 60 (excluded)
};

/// @return seconds since 1858-11-17 00:00 (Modified Julian Date 0), exact for whole seconds;
/// nothing
///         for a date or time that does not exist or lies outside the years 1900 to 2199.
std::optional<double> SecondsFromCivil(const CivilTime& time);

/// The inverse, for any time of those years.
CivilTime CivilFromSeconds(double seconds);

/// @param text "YYYY-MM-DDTHH:MM:SS", exactly
/// @return seconds as from SecondsFromCivil; nothing when the text is no such time.
std::optional<double> SecondsFromIsoText(std::string_view text);

/// @return this machine's clock in UTC, seconds since Modified Julian Date 0.
double SystemUtcSeconds();

}  // namespace simulator
