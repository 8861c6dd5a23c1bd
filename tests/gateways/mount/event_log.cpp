// SPDX-License-Identifier: MIT
#include "tests/gateways/mount/event_log.h"

#include "tests/support/eventually.h"

using velquin::Event;

velquin::Listener EventLog::AsListener() const {
  return [shared = shared_](const Event& event) {
    const std::lock_guard guard(shared->lock);
    shared->events.push_back(event);
  };
}

std::vector<Event> EventLog::All() const {
  const std::lock_guard guard(shared_->lock);
  return shared_->events;
}

std::vector<Event> EventLog::Of(Event::Kind kind) const {
  std::vector<Event> found;
  for (const Event& event : All()) {
    if (event.kind == kind) found.push_back(event);
  }
  return found;
}

bool EventLog::WaitFor(Event::Kind kind, int count) const {
  return Eventually([&] { return Count(kind) >= count; }, std::chrono::seconds(20));
}
