// SPDX-License-Identifier: MIT
// Ticket: the receipt of one request; it gets its outcome exactly once. Copies share it. It
// outlives the mount, whose destructor ends every ticket. Any thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace velquin {

enum class Outcome {
  kDone,
  kBelowHorizon,  ///< the target is below the horizon; nothing moved
  kRefused,       ///< the controller refused the command
  kNoAnswer,      ///< sent, but not acknowledged: whether the mount obeyed is unknown
  kParked,        ///< the mount is parked
  kMoving,        ///< not possible while the mount moves
  kAxisBusy,      ///< a pulse runs on the axis, and the caller asked not to replace it
  kInvalidValue,  ///< a value is out of range or not a number; nothing was sent
  kNotConnected,  ///< there is no connection, or the caller ended it
  kLinkLost,      ///< the controller is silent
  kCancelledByStop,
  kOvertaken,         ///< a later request replaced it
  kStoppedElsewhere,  ///< the mount came to rest, but not at its goal
};

/// @return a short sentence for people, in English, for example "the target is below the horizon".
const char* Text(Outcome outcome);

class TicketState;

class Ticket {
 public:
  /// Calls the callback once with the outcome, on a thread of the mount, without any lock held; on
  /// the caller's thread if the outcome is known already. The callback may throw (no effect), block
  /// (only other callbacks of tickets wait) and destroy the mount.
  using Callback = std::function<void(Outcome outcome)>;

  explicit Ticket(std::shared_ptr<TicketState> state) : state_(std::move(state)) {}

  /// @return a number that no other ticket of this process has.
  uint64_t Id() const;
  /// @return the outcome, or nothing while it is unknown.
  std::optional<Outcome> Result() const;
  bool IsKnown() const { return Result().has_value(); }
  /// Waits. @return the outcome, or nothing if the time was over first.
  std::optional<Outcome> WaitFor(std::chrono::steady_clock::duration longest) const;
  std::optional<Outcome> WaitUntil(std::chrono::steady_clock::time_point deadline) const;
  /// Every callback is called once.
  void OnKnown(Callback callback) const;

 private:
  std::shared_ptr<TicketState> state_;
};

}  // namespace velquin
