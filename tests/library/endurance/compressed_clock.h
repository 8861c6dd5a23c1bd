// SPDX-License-Identifier: MIT
// Time that runs faster for the loaded library: it never sleeps, and its clock jumps ahead by what
// it would have slept. The library itself stays as it was built.
#pragma once

#include <cstdint>
#include <functional>

#include "tests/support/replaced_import.h"

/// Stands in for Sleep and clock in the library's import table. One object at a time, made and gone
/// while the library is loaded and no session runs.
class CompressedClock {
 public:
  /// Told on the thread that would have slept, in place of the sleep, for how long it would have.
  using AtSleep = std::function<void(uint32_t ms)>;

  /// @param atSleep may be empty
  explicit CompressedClock(AtSleep atSleep = {});

  /// @return seconds since the process began, those that were not slept included. Any thread.
  static double Seconds();

 private:
  const ReplacedImport sleep_, clock_;
};
