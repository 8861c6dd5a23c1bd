// SPDX-License-Identifier: MIT
// TicketState: the data that the copies of a ticket share. Any thread.
#pragma once

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

#include "gateways/mount/ticket.h"

namespace velquin {

class TicketState {
 public:
  TicketState();
  TicketState(const TicketState&) = delete;
  TicketState& operator=(const TicketState&) = delete;

  const uint64_t id;

  /// Sets the outcome. @param callbacks receives those to be called, without a lock
  /// @return false, and nothing happens, if it is known already.
  bool Complete(Outcome outcome, std::vector<Ticket::Callback>& callbacks);
  std::optional<Outcome> Result() const;
  std::optional<Outcome> WaitUntil(std::chrono::steady_clock::time_point deadline) const;
  /// @return the outcome if it is known; then the caller must run the callback.
  std::optional<Outcome> Add(Ticket::Callback& callback);

 private:
  mutable std::mutex lock_;
  mutable std::condition_variable known_;
  // Guarded by lock_.
  std::optional<Outcome> outcome_;
  std::vector<Ticket::Callback> callbacks_;
};

}  // namespace velquin
