// SPDX-License-Identifier: MIT
#include "gateways/mount/inbox.h"

#include <algorithm>
#include <utility>

namespace velquin {

namespace {

// Moves the requests that meet the condition out of a queue.
template <typename Condition>
std::vector<Request> TakeOut(std::deque<Request>& requests, Condition condition) {
  std::vector<Request> taken;
  std::deque<Request> rest;
  for (Request& request : requests) {
    if (condition(request.body)) {
      taken.push_back(std::move(request));
    } else {
      rest.push_back(std::move(request));
    }
  }
  requests.swap(rest);
  return taken;
}

}  // namespace

Ticket Inbox::Submit(const RequestBody& body) {
  Request request = {body, std::make_shared<TicketState>()};
  const std::shared_ptr<TicketState> ticket = request.ticket;
  std::vector<Request> overtaken;
  std::optional<Outcome> refused;
  if (!IsValid(request.body)) refused = Outcome::kInvalidValue;
  {
    const std::lock_guard guard(lock_);
    if (!refused) refused = refuseWith_;
    if (!refused) {
      if (IsJourney(request.body)) overtaken = TakeOut(requests_, IsJourney);
      requests_.push_back(std::move(request));
    }
  }
  changed_.notify_all();
  if (refused) announcer_->End(ticket, *refused);
  for (const Request& earlier : overtaken) announcer_->End(earlier.ticket, Outcome::kOvertaken);
  return Ticket(ticket);
}

Ticket Inbox::SubmitStop() {
  const auto ticket = std::make_shared<TicketState>();
  std::vector<Request> cancelled;
  std::optional<Outcome> refused;
  {
    const std::lock_guard guard(lock_);
    refused = refuseWith_;
    if (!refused) {
      cancelled = TakeOut(requests_, IsMotion);
      stops_.push_back(ticket);
      UpdateUrgent();
    }
  }
  changed_.notify_all();
  if (refused) announcer_->End(ticket, *refused);
  for (const Request& request : cancelled) {
    announcer_->End(request.ticket, Outcome::kCancelledByStop);
  }
  return Ticket(ticket);
}

void Inbox::Order(SessionOrder order) {
  {
    const std::lock_guard guard(lock_);
    order_ = std::move(order);
    UpdateUrgent();
  }
  // Waiting requests belong to the connection that ends now, and so do those that arrive before the
  // next one.
  Refuse(Outcome::kNotConnected);
}

void Inbox::SetWatched(bool watched) {
  {
    const std::lock_guard guard(lock_);
    watched_ = watched;
    woken_ = true;
  }
  changed_.notify_all();
}

void Inbox::SetPollPeriods(std::chrono::milliseconds active, std::chrono::milliseconds idle) {
  using std::chrono::milliseconds;
  constexpr milliseconds kShortest{10};
  constexpr milliseconds kLongest{3'600'000};
  {
    const std::lock_guard guard(lock_);
    activePoll_ = std::clamp(active, kShortest, kLongest);
    idlePoll_ = std::clamp(idle, kShortest, kLongest);
    woken_ = true;
  }
  changed_.notify_all();
}

void Inbox::Wake() {
  {
    const std::lock_guard guard(lock_);
    woken_ = true;
  }
  changed_.notify_all();
}

void Inbox::Quit() {
  {
    const std::lock_guard guard(lock_);
    quitting_ = true;
    UpdateUrgent();
  }
  Refuse(Outcome::kNotConnected);
}

void Inbox::WaitUntil(MonotonicTime due, WakeFor what) {
  std::unique_lock guard(lock_);
  const auto somethingToDo = [&] {
    if (quitting_ || order_) return true;
    return what == WakeFor::kAnything && (woken_ || !stops_.empty() || !requests_.empty());
  };
  if (due == MonotonicTime::max()) {
    changed_.wait(guard, somethingToDo);  // a timed wait overflows with the largest time
  } else if (due > std::chrono::steady_clock::now()) {
    changed_.wait_until(guard, due, somethingToDo);
  }
  woken_ = false;
}

bool Inbox::IsQuitting() const {
  const std::lock_guard guard(lock_);
  return quitting_;
}

void Inbox::UpdateUrgent() {
  urgent_.store(quitting_ || order_.has_value() || !stops_.empty(), std::memory_order_release);
}

std::optional<SessionOrder> Inbox::TakeOrder() {
  const std::lock_guard guard(lock_);
  std::optional<SessionOrder> order;
  order.swap(order_);
  UpdateUrgent();
  return order;
}

std::optional<Request> Inbox::TakeRequest() {
  const std::lock_guard guard(lock_);
  if (requests_.empty()) return std::nullopt;
  Request request = std::move(requests_.front());
  requests_.pop_front();
  return request;
}

Inbox::Tickets Inbox::TakeStops() {
  const std::lock_guard guard(lock_);
  Tickets stops;
  stops.swap(stops_);
  UpdateUrgent();
  return stops;
}

bool Inbox::HasStop() const {
  const std::lock_guard guard(lock_);
  return !stops_.empty();
}

void Inbox::Accept() {
  const std::lock_guard guard(lock_);
  // An order that arrived meanwhile has ended this connection.
  if (!order_ && !quitting_) refuseWith_.reset();
}

void Inbox::Refuse(Outcome outcome) {
  std::deque<Request> requests;
  Tickets stops;
  {
    const std::lock_guard guard(lock_);
    refuseWith_ = outcome;
    requests.swap(requests_);
    stops.swap(stops_);
    UpdateUrgent();
  }
  changed_.notify_all();
  for (const Request& request : requests) announcer_->End(request.ticket, outcome);
  for (const auto& stop : stops) announcer_->End(stop, outcome);
}

std::chrono::milliseconds Inbox::PollPeriod(bool moving) const {
  const std::lock_guard guard(lock_);
  return moving || watched_ ? activePoll_ : idlePoll_;
}

}  // namespace velquin
