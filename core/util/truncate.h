// SPDX-License-Identifier: MIT
// Converts doubles to 32-bit integers, without undefined behaviour for numbers that do not fit.
#pragma once

#include <cstdint>
#include <limits>

/// Truncates toward zero. @return the nearest bound for numbers out of range, 0 for NaN.
inline int32_t TruncateToInt32(double number) {
  using Limits = std::numeric_limits<int32_t>;
  if (number != number) return 0;
  if (number >= Limits::max()) return Limits::max();
  if (number <= Limits::min()) return Limits::min();
  return static_cast<int32_t>(number);
}
