// SPDX-License-Identifier: MIT
// How long the long runs are.
#pragma once

#include <cstdlib>
#include <string_view>

/// @return true when scripts/soak asks for the real thing; false for the short version that every
/// test run makes.
inline bool IsFullLength() {
  const char* wanted = std::getenv("VELQUIN_SOAK");
  return wanted != nullptr && std::string_view(wanted) == "full";
}
