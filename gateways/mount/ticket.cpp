// SPDX-License-Identifier: MIT
#include "gateways/mount/ticket.h"

#include <atomic>
#include <utility>

#include "gateways/mount/ticket_state.h"

namespace velquin {

namespace {

uint64_t NextId() {
  static std::atomic<uint64_t> last = 0;
  return ++last;
}

}  // namespace

TicketState::TicketState() : id(NextId()) {}

bool TicketState::Complete(Outcome outcome, std::vector<Ticket::Callback>& callbacks) {
  {
    const std::lock_guard guard(lock_);
    if (outcome_) return false;
    outcome_ = outcome;
    callbacks = std::move(callbacks_);
  }
  known_.notify_all();
  return true;
}

std::optional<Outcome> TicketState::Result() const {
  const std::lock_guard guard(lock_);
  return outcome_;
}

std::optional<Outcome> TicketState::WaitUntil(
    std::chrono::steady_clock::time_point deadline) const {
  std::unique_lock guard(lock_);
  known_.wait_until(guard, deadline, [this] { return outcome_.has_value(); });
  return outcome_;
}

std::optional<Outcome> TicketState::Add(Ticket::Callback& callback) {
  const std::lock_guard guard(lock_);
  if (!outcome_) callbacks_.push_back(std::move(callback));
  return outcome_;
}

uint64_t Ticket::Id() const {
  return state_->id;
}

std::optional<Outcome> Ticket::Result() const {
  return state_->Result();
}

std::optional<Outcome> Ticket::WaitFor(std::chrono::steady_clock::duration longest) const {
  return WaitUntil(std::chrono::steady_clock::now() + longest);
}

std::optional<Outcome> Ticket::WaitUntil(std::chrono::steady_clock::time_point deadline) const {
  return state_->WaitUntil(deadline);
}

void Ticket::OnKnown(Callback callback) const {
  const std::optional<Outcome> outcome = state_->Add(callback);
  if (!outcome) return;
  try {
    callback(*outcome);
  } catch (...) {
    // As documented: an exception of a callback has no effect.
  }
}

const char* Text(Outcome outcome) {
  switch (outcome) {
    case Outcome::kDone:
      return "done";
    case Outcome::kBelowHorizon:
      return "the target is below the horizon";
    case Outcome::kRefused:
      return "the controller refused the command";
    case Outcome::kNoAnswer:
      return "the controller did not answer";
    case Outcome::kParked:
      return "the mount is parked";
    case Outcome::kMoving:
      return "the mount is moving";
    case Outcome::kAxisBusy:
      return "a guide pulse is running on this axis";
    case Outcome::kInvalidValue:
      return "a value is out of range";
    case Outcome::kNotConnected:
      return "there is no connection to the mount";
    case Outcome::kLinkLost:
      return "the connection to the mount is lost";
    case Outcome::kCancelledByStop:
      return "cancelled by a stop";
    case Outcome::kOvertaken:
      return "a later request took its place";
    case Outcome::kStoppedElsewhere:
      return "the mount stopped before it reached its goal";
  }
  return "";
}

}  // namespace velquin
