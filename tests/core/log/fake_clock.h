// SPDX-License-Identifier: MIT
// The system's clock, held still.
#pragma once

#include <chrono>

/// While it lives std::chrono::system_clock stands still; without one it runs. One at a time.
class FakeClock {
 public:
  /// @param sinceEpoch time since 1970-01-01 UTC
  explicit FakeClock(std::chrono::microseconds sinceEpoch);
  ~FakeClock();
  FakeClock(const FakeClock&) = delete;
  FakeClock& operator=(const FakeClock&) = delete;

  void MoveTo(std::chrono::microseconds sinceEpoch);
};
