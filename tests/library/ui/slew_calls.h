// SPDX-License-Identifier: MIT
// The hand moves that the hand controller asked the engine for, kept on their way.
#pragma once

#include <chrono>
#include <cstdint>
#include <ostream>
#include <vector>

namespace ui_test {

struct SlewCall {
  int32_t direction;  // a TelescopeDirection
  int32_t pushed;
  int32_t speed;

  bool operator==(const SlewCall&) const = default;
};

inline void PrintTo(const SlewCall& call, std::ostream* out) {
  *out << '{' << call.direction << ", " << call.pushed << ", " << call.speed << '}';
}

/// @return the calls since the last ClearSlewCalls.
std::vector<SlewCall> SlewCalls();
/// @return when they came.
std::vector<std::chrono::steady_clock::time_point> SlewCallTimes();
void ClearSlewCalls();

}  // namespace ui_test
