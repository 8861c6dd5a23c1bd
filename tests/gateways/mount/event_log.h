// SPDX-License-Identifier: MIT
// EventLog: keeps what a mount told, for a test to look at. Any thread.
#pragma once

#include <chrono>
#include <memory>
#include <mutex>
#include <vector>

#include "gateways/mount/mount.h"

class EventLog {
 public:
  /// @return a listener that writes here; it keeps what it needs alive.
  velquin::Listener AsListener() const;
  std::vector<velquin::Event> All() const;
  std::vector<velquin::Event> Of(velquin::Event::Kind kind) const;
  int Count(velquin::Event::Kind kind) const { return static_cast<int>(Of(kind).size()); }
  /// @return false when it has not been told (so often) by the end of the time.
  bool WaitFor(velquin::Event::Kind kind, int count = 1) const;

 private:
  struct Shared {
    std::mutex lock;
    std::vector<velquin::Event> events;  // guarded by lock
  };
  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
};
