// SPDX-License-Identifier: MIT
// Backoff: the wait between attempts to find a lost controller again. Pure; not locked.
#pragma once

#include <algorithm>
#include <chrono>

namespace velquin {

class Backoff {
 public:
  static constexpr std::chrono::milliseconds kShortest{500};
  static constexpr std::chrono::milliseconds kLongest{5000};

  /// @return the wait before the next attempt: 0.5 s, 1 s, 2 s, 4 s, then 5 s each time.
  std::chrono::milliseconds Next() {
    const std::chrono::milliseconds wait = next_;
    next_ = std::min(2 * next_, kLongest);
    return wait;
  }
  void Reset() { next_ = kShortest; }

 private:
  std::chrono::milliseconds next_ = kShortest;
};

}  // namespace velquin
