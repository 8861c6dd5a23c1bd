// SPDX-License-Identifier: MIT
// MotionPlan: turns the wanted motion of the two axes (guide pulses with lengths, hand moves that
// are held) into the controller's move commands. Each command carries both axes and one duration,
// and replaces the one before. Pure: it receives the time and sends nothing. Not locked: only the
// worker uses it.
//
// Two pulses of different lengths become one command for the common part and one for the rest. The
// second is due when the first has run out, counted from its acknowledgement. The controller began
// before that, so the second command never cuts the first one short, and the lengths on the wire
// add up to exactly the requested ones. A pulse that joins a running one replaces its command at
// once; the time since that command was sent counts as done.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>

#include "gateways/mount/snapshot.h"

namespace velquin {

class MotionPlan {
 public:
  using Length = std::chrono::microseconds;
  using Rates = std::array<double, kAxisCount>;

  /// A command to send now.
  struct Command {
    Length length;
    Rates rates;
    bool ends;  ///< the motion is over: both rates are 0, which is a stop
  };
  /// The result for the axes when a segment has run out.
  struct Ended {
    std::array<bool, kAxisCount> pulse = {};  ///< the axis's pulse is over
  };

  /// Begins a pulse and replaces the axis's motion. @param rate 1 or -1
  void SetPulse(Axis axis, double rate, Length length);
  /// Moves an axis or renews its move. @return true if that needs a command, false if it renews.
  bool Hold(Axis axis, double rate, MonotonicTime until);
  /// Ends the axis's motion. @return true if there was one.
  bool End(Axis axis);
  void Clear() { *this = MotionPlan(); }

  bool IsPulsing(Axis axis) const { return runs_[Index(axis)].kind == Kind::kPulse; }
  bool IsHeld(Axis axis) const { return runs_[Index(axis)].kind == Kind::kHold; }
  bool IsIdle() const;

  /// @return when Next returns a command; nothing if none is pending.
  std::optional<MonotonicTime> Due() const;
  /// Call it at or after Due, before Next. @return the pulses that have ended by then.
  Ended EndSegment(MonotonicTime now);
  /// @return the command to send now, if one is due.
  std::optional<Command> Next(MonotonicTime now);
  /// The command from Next was sent and acknowledged.
  void Acknowledged(MonotonicTime sentAt, MonotonicTime acknowledgedAt);
  /// The command from Next failed: pulses are dropped, held axes are commanded again.
  /// @param refused by the controller: held axes are dropped, too
  void Failed(bool refused);

 private:
  enum class Kind { kIdle, kPulse, kHold };
  struct Run {
    Kind kind = Kind::kIdle;
    double rate = 0.0;
    Length left{0};       // of a pulse, at the start of the running segment
    MonotonicTime until;  // of a hold
  };
  struct Segment {
    MonotonicTime sentAt;
    MonotonicTime endsAt;
    Length length;
    std::array<bool, kAxisCount> carries;  // the axes that it moves
    bool mayRenew;                         // before it ends
  };

  void CutSegment(MonotonicTime now);
  bool CanRenew() const;
  void DropSpentHolds(MonotonicTime now);

  std::array<Run, kAxisCount> runs_;
  std::optional<Segment> segment_;  // the controller is running it
  std::optional<Command> sending_;  // returned by Next
  bool changed_ = false;            // the controller does not have the motion of runs_ yet
};

}  // namespace velquin
