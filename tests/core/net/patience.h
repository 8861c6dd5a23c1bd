// SPDX-License-Identifier: MIT
// How long a test waits for answers. A busy machine must not make an answer late, and a silence
// should cost little, so the test says what it expects and the link's own time-out does not count.
#pragma once

#include "tests/core/net/platform_faults.h"

/// As long as it lives, waits for datagrams take as long as said here, and the process clock stands
/// still, so that no exchange counts as slow.
class Patience {
 public:
  static constexpr int kAlways = 1000000000;

  explicit Patience(PlatformFaults& faults) : faults_(faults) {
    faults.processClockMs = [] { return 1000; };
    faults.wait = [this](platform::SocketHandle socket, const platform::WaitTime&) {
      constexpr platform::WaitTime kLong = {10, 0};
      constexpr platform::WaitTime kShort = {0, 30000};
      return platform::WaitReadable(socket, left_-- > 0 ? kLong : kShort);
    };
  }
  ~Patience() {
    faults_.processClockMs = nullptr;
    faults_.wait = nullptr;
  }
  Patience(const Patience&) = delete;
  Patience& operator=(const Patience&) = delete;

  /// The next exchanges are answered, those after them meet silence. At first all are answered.
  void For(int exchanges) { left_ = exchanges; }
  /// All exchanges meet silence from now on.
  void End() { For(0); }
  /// All are answered again.
  void Restore() { For(kAlways); }

 private:
  PlatformFaults& faults_;
  int left_ = kAlways;
};
