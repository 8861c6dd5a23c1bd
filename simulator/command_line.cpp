// SPDX-License-Identifier: MIT
#include "simulator/command_line.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "simulator/characters.h"

namespace simulator {

namespace {

constexpr size_t kKeyLength = 6;  // "$" and five letters

bool IsKeyCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9');
}

std::string_view WithoutBlanks(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

std::vector<std::string> SplitAtCommas(std::string_view text) {
  std::vector<std::string> values;
  for (size_t comma = text.find(','); comma != text.npos; comma = text.find(',')) {
    values.emplace_back(text.substr(0, comma));
    text.remove_prefix(comma + 1);
  }
  values.emplace_back(text);
  return values;
}

/// @return the whole number that the text consists of, blanks around it aside.
template <typename Number>
std::optional<Number> DigitsValue(std::string_view text) {
  const std::string_view digits = WithoutBlanks(text);
  Number number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number;
}

}  // namespace

CommandLine ParseCommandLine(std::string_view line) {
  CommandLine command;
  if (line.size() < kKeyLength || line[0] != '$') return command;
  const std::string_view key = line.substr(0, kKeyLength);
  if (!std::all_of(key.begin() + 1, key.end(), IsKeyCharacter)) return command;
  command.key = key;
  if (line.size() == kKeyLength || line.size() > kMaxCommandLength) return command;
  if (std::any_of(line.begin(), line.end(), IsControlCharacter)) return command;

  const std::string_view rest = line.substr(kKeyLength);
  command.isQuery = rest == "?";
  command.isSetting = rest[0] == '=';
  if (command.isSetting) command.values = SplitAtCommas(rest.substr(1));
  return command;
}

std::optional<double> NumberValue(std::string_view value, double low, double high) {
  const std::string_view digits = WithoutBlanks(value);
  double number = 0.0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number,
                                            std::chars_format::fixed);
  if (error != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  if (!std::isfinite(number) || number < low || number > high) return std::nullopt;
  return number;
}

std::optional<int> WholeValue(std::string_view value, int low, int high) {
  const auto number = DigitsValue<int>(value);
  if (!number || *number < low || *number > high) return std::nullopt;
  return number;
}

std::optional<uint64_t> UnsignedValue(std::string_view value) {
  return DigitsValue<uint64_t>(value);
}

}  // namespace simulator
