// SPDX-License-Identifier: MIT
// Ctrl-C and the closing of the console window, turned into a sleep that ends early. The system
// reports them on a thread of its own; the program's thread then ends in good order, so that the
// mount is stopped and the session closed.
#pragma once

namespace velquinctl {

/// Owned by main for the life of the program; there is one. Sleeping: one thread.
class Interrupt {
 public:
  Interrupt();
  Interrupt(const Interrupt&) = delete;
  Interrupt& operator=(const Interrupt&) = delete;
  /// Lets a closing console window go on: everything is in order now.
  ~Interrupt();

  /// Sleeps. @throws Failure with kInterrupted, at once, when Ctrl-C was or is pressed.
  void SleepMs(int durationMs) const;

  /// @throws Failure with kInterrupted when Ctrl-C was pressed.
  void Check() const { SleepMs(0); }

  /// Says whether the mount may be moving because of this program: a second Ctrl-C, which ends it
  /// at once, then says so. Any thread.
  static void SetMountMayMove(bool may);
};

}  // namespace velquinctl
