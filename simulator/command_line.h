// SPDX-License-Identifier: MIT
// One command line of the controller's language taken apart: "$" and a five-letter key, then "?" or
// "=" and values separated by ",". Pure functions; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

struct CommandLine {
  std::string key;                  ///< with its "$"; empty when the line has none
  bool isQuery = false;             ///< "?" and nothing after it
  bool isSetting = false;           ///< "=" and values
  std::vector<std::string> values;  ///< of a setting, at least one, possibly empty ones
};

/// Longest command line that is looked at, without its line end.
inline constexpr size_t kMaxCommandLength = 255;

/// Takes a line apart. A line that is too long, holds control characters or goes on wrongly after
/// its key is neither query nor setting; its key is kept so that the refusal can name it.
CommandLine ParseCommandLine(std::string_view line);

/// @return the plain decimal number that the value consists of, blanks around it aside; nothing for
///         anything else ("1e5", "nan", "0x1", "1 2") and for numbers outside low to high.
std::optional<double> NumberValue(std::string_view value, double low, double high);

/// The same for a whole number.
std::optional<int> WholeValue(std::string_view value, int low, int high);

/// The same for a whole number of 64 bits without a sign.
std::optional<uint64_t> UnsignedValue(std::string_view value);

}  // namespace simulator
