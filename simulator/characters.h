// SPDX-License-Identifier: MIT
// Which bytes of a text a terminal may see. Pure functions; any thread.
#pragma once

namespace simulator {

inline constexpr char kDelete = '\x7f';  ///< the one control character behind the letters

/// @return whether a byte is one of ASCII that takes its place on a line, the space included.
constexpr bool IsPrintable(char c) {
  return c >= ' ' && c < kDelete;
}

/// @return whether a byte is a control character of ASCII. Those of other alphabets are neither
/// this
///         nor printable.
constexpr bool IsControlCharacter(char c) {
  return (c >= '\0' && c < ' ') || c == kDelete;
}

}  // namespace simulator
