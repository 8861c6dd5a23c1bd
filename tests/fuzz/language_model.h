// SPDX-License-Identifier: MIT
// Which settings the simulated controller takes, by the rules of its language alone. Only those
// whose fate does not depend on what the mount is doing.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// @return the key that a line begins with, "$" and five capitals or digits; empty without one.
std::string ModelKeyOf(std::string_view line);
bool IsKnownKey(const std::string& key);
/// @return the values of a line "KEY=..."; nothing when it is no setting.
std::optional<std::vector<std::string>> ModelValues(std::string_view line);
/// @return whether the controller takes the setting; nothing when that depends on the mount.
std::optional<bool> IsTaken(const std::string& key, const std::vector<std::string>& values);

/// @return a plain decimal number within bounds.
std::optional<double> ModelDecimal(const std::string& value, double low, double high);
std::optional<long> ModelWhole(const std::string& value, long low, long high);

}  // namespace simulator
