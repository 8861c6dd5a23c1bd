// SPDX-License-Identifier: MIT
// Inbox: the callers' requests to the worker, and the way to wake it. Any thread may call any
// function, except those marked as the worker's. Only WaitUntil waits.
#pragma once

#include <atomic>
#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <vector>

#include "gateways/mount/announcer.h"
#include "gateways/mount/request.h"

namespace velquin {

class Inbox {
 public:
  using Tickets = std::vector<std::shared_ptr<TicketState>>;

  explicit Inbox(std::shared_ptr<Announcer> announcer) : announcer_(std::move(announcer)) {}

  // --- Callers -----------------------------------------------------------------------------------

  /// Adds a request at the end of the queue. Ends it at once if the worker accepts no requests or a
  /// value is invalid. A journey overtakes those that wait.
  Ticket Submit(const RequestBody& body);
  /// Goes before all other requests and cancels those that would move the mount.
  Ticket SubmitStop();
  void Order(SessionOrder order);
  void SetWatched(bool watched);
  void SetPollPeriods(std::chrono::milliseconds active, std::chrono::milliseconds idle);
  void Wake();
  /// Ends the worker.
  void Quit();

  // --- Worker ------------------------------------------------------------------------------------

  enum class WakeFor { kAnything, kUrgent };
  /// Waits until there is something to do or the time has come. @param what kUrgent: only orders
  /// and the end wake it
  void WaitUntil(MonotonicTime due, WakeFor what);
  bool IsQuitting() const;
  /// True while a stop, an order or the end waits; then an exchange that may be abandoned ends.
  const std::atomic<bool>& Urgent() const { return urgent_; }
  std::optional<SessionOrder> TakeOrder();
  std::optional<Request> TakeRequest();
  Tickets TakeStops();
  bool HasStop() const;
  /// From now on requests are accepted.
  void Accept();
  /// Ends all waiting requests with an outcome, and all later ones at once.
  void Refuse(Outcome outcome);
  /// @param moving the mount moves @return the time between polls.
  std::chrono::milliseconds PollPeriod(bool moving) const;

 private:
  void UpdateUrgent();

  const std::shared_ptr<Announcer> announcer_;
  std::atomic<bool> urgent_ = false;
  mutable std::mutex lock_;
  std::condition_variable changed_;
  // Guarded by lock_.
  std::optional<Outcome> refuseWith_ = Outcome::kNotConnected;
  std::deque<Request> requests_;
  Tickets stops_;
  std::optional<SessionOrder> order_;
  std::chrono::milliseconds activePoll_{100};
  std::chrono::milliseconds idlePoll_{500};
  bool watched_ = false;
  bool woken_ = false;
  bool quitting_ = false;
};

}  // namespace velquin
