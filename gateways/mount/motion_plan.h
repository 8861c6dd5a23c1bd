// SPDX-License-Identifier: MIT
// MotionPlan: turns what is wanted of the two axes (guide pulses with lengths, hand moves that are
// held) into the controller's move commands, each of which carries both axes and one duration and
// replaces the one before. Pure: told the time, sends nothing. Not locked: the worker's own.
//
// Two pulses of different lengths are one command for the common part and one for the rest. The
// second is due when the first has run out by the time of its acknowledgement, which is after the
// controller began it: so it never cuts the first one short, and the lengths on the wire add up to
// exactly what was asked. A pulse that joins a running one replaces its command at once; of the
// running one the time since its command was sent counts as done.
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

  /// A command to be sent now.
  struct Command {
    Length length;
    Rates rates;
    bool ends;  ///< nothing is left to move: both rates are 0, which is a stop
  };
  /// What became of the axes when a segment ran out.
  struct Ended {
    std::array<bool, kAxisCount> pulse = {};  ///< the axis's pulse is over
  };

  /// Begins a pulse, in place of whatever the axis did. @param rate 1 or -1
  void SetPulse(Axis axis, double rate, Length length);
  /// Moves or goes on moving an axis. @return true when that needs a command, false when it renews.
  bool Hold(Axis axis, double rate, MonotonicTime until);
  /// Ends what the axis does. @return true when it did something.
  bool End(Axis axis);
  void Clear() { *this = MotionPlan(); }

  bool IsPulsing(Axis axis) const { return runs_[Index(axis)].kind == Kind::kPulse; }
  bool IsHeld(Axis axis) const { return runs_[Index(axis)].kind == Kind::kHold; }
  bool IsIdle() const;

  /// @return when Next has something to say; nothing while it has not.
  std::optional<MonotonicTime> Due() const;
  /// Call it at or after Due, before Next. @return which pulses have ended by then.
  Ended EndSegment(MonotonicTime now);
  /// @return the command to be sent now, if one is due.
  std::optional<Command> Next(MonotonicTime now);
  /// The command that Next gave was sent and acknowledged.
  void Acknowledged(MonotonicTime sentAt, MonotonicTime acknowledgedAt);
  /// It was not: pulses are given up, held axes are to be commanded again. @param refused by the
  /// controller: held axes are given up, too
  void Failed(bool refused);

 private:
  enum class Kind { kIdle, kPulse, kHold };
  struct Run {
    Kind kind = Kind::kIdle;
    double rate = 0.0;
    Length left{0};       // of a pulse, at the beginning of the running segment
    MonotonicTime until;  // of a hold
  };
  struct Segment {
    MonotonicTime sentAt;
    MonotonicTime endsAt;
    Length length;
    std::array<bool, kAxisCount> carries;  // axes that it moves
    bool mayRenew;                         // before its end
  };

  void CutSegment(MonotonicTime now);
  bool CanRenew() const;
  void DropSpentHolds(MonotonicTime now);

  std::array<Run, kAxisCount> runs_;
  std::optional<Segment> segment_;  // what the controller carries out
  std::optional<Command> sending_;  // what Next gave
  bool changed_ = false;            // the wire does not yet say what runs_ says
};

}  // namespace velquin
