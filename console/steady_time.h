// SPDX-License-Identifier: MIT
// The clock that deadlines and rates are measured with.
#pragma once

#include <chrono>

namespace velquinctl {

/// @return seconds since some fixed moment; never goes back. Any thread.
inline double SteadySeconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

}  // namespace velquinctl
