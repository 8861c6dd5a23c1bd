// SPDX-License-Identifier: MIT
// Inbox: what callers want of the worker, and how they wake it. All functions may be called from
// any thread; those marked so are the worker's. Nothing here waits but WaitUntil.
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

  /// Puts a request behind the others, or ends it at once when the worker takes none or a value is
  /// wrong. A journey overtakes those that wait.
  Ticket Submit(const RequestBody& body);
  /// Goes before all others and cancels those that would move the mount.
  Ticket SubmitStop();
  void Order(SessionOrder order);
  void SetWatched(bool watched);
  void SetPollPeriods(std::chrono::milliseconds active, std::chrono::milliseconds idle);
  void Wake();
  /// The worker ends.
  void Quit();

  // --- Worker ------------------------------------------------------------------------------------

  enum class WakeFor { kAnything, kUrgent };
  /// Waits until there is something to do or the time has come. @param what kUrgent: for orders and
  /// the end only, other things may wait
  void WaitUntil(MonotonicTime due, WakeFor what);
  bool IsQuitting() const;
  /// True while a stop, an order or the end waits; an exchange that can be given up is.
  const std::atomic<bool>& Urgent() const { return urgent_; }
  std::optional<SessionOrder> TakeOrder();
  std::optional<Request> TakeRequest();
  Tickets TakeStops();
  bool HasStop() const;
  /// From now on requests are taken.
  void Accept();
  /// From now on requests end at once with an outcome, as do all that wait.
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
