// SPDX-License-Identifier: MIT
#include "gateways/mount/announcer.h"

#include <utility>
#include <vector>

namespace velquin {

void Announcer::Publish(Snapshot& snapshot) {
  ++snapshot.sequence;
  board_.Publish(snapshot);
  if (listenerCount_.load(std::memory_order_relaxed) == 0) return;
  Event event;
  event.snapshot = snapshot;
  Tell(event);
}

void Announcer::Tell(const Event& event) {
  if (listenerCount_.load(std::memory_order_relaxed) == 0) return;
  const std::lock_guard guard(lock_);
  for (auto& [number, told] : listeners_) {
    // The task must not keep the thread that calls it alive.
    told->thread.Post([listener = told->listener, event] { (*listener)(event); },
                      event.kind == Event::Kind::kSnapshot);
  }
}

void Announcer::End(const std::shared_ptr<TicketState>& ticket, Outcome outcome) {
  std::vector<Ticket::Callback> callbacks;
  if (!ticket->Complete(outcome, callbacks)) return;
  for (Ticket::Callback& callback : callbacks) {
    ticketCallbacks_.Post([call = std::move(callback), outcome] { call(outcome); });
  }
  if (listenerCount_.load(std::memory_order_relaxed) == 0) return;
  Event event;
  event.kind = Event::Kind::kTicketKnown;
  event.snapshot = Latest();
  event.ticketId = ticket->id;
  event.outcome = outcome;
  Tell(event);
}

uint64_t Announcer::AddListener(Listener listener) {
  auto told = std::make_shared<Told>();
  told->listener = std::make_shared<const Listener>(std::move(listener));
  const std::lock_guard guard(lock_);
  listeners_[++lastNumber_] = std::move(told);
  ++listenerCount_;
  return lastNumber_;
}

void Announcer::RemoveListener(uint64_t number) {
  std::shared_ptr<Told> told;
  {
    const std::lock_guard guard(lock_);
    const auto found = listeners_.find(number);
    if (found == listeners_.end()) return;
    told = std::move(found->second);
    listeners_.erase(found);
    --listenerCount_;
  }
  told->thread.Close(CallbackThread::Waiting::kDrop);
}

void Announcer::Close() {
  std::map<uint64_t, std::shared_ptr<Told>> listeners;
  {
    const std::lock_guard guard(lock_);
    listeners.swap(listeners_);
    listenerCount_ = 0;
  }
  for (auto& [number, told] : listeners) told->thread.Close(CallbackThread::Waiting::kDrop);
  ticketCallbacks_.Close(CallbackThread::Waiting::kStillCall);
}

}  // namespace velquin
