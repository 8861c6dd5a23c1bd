// SPDX-License-Identifier: MIT
// Announcer: publishes the snapshots of a mount, ends its tickets and calls its listeners. It never
// calls a listener or callback on the thread that announces, nor with a lock held.
#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>

#include "gateways/mount/callback_thread.h"
#include "gateways/mount/mount.h"
#include "gateways/mount/snapshot_board.h"
#include "gateways/mount/ticket_state.h"

namespace velquin {

class Announcer {
 public:
  /// Worker only. @param snapshot receives the next number
  void Publish(Snapshot& snapshot);
  /// Any thread; does not wait.
  Snapshot Latest() const { return board_.Latest(); }

  /// Any thread.
  void Tell(const Event& event);
  /// Ends a ticket, unless it has ended. Any thread.
  void End(const std::shared_ptr<TicketState>& ticket, Outcome outcome);

  uint64_t AddListener(Listener listener);
  void RemoveListener(uint64_t number);
  /// Drops the listeners; callbacks of tickets are still called.
  void Close();

 private:
  struct Told {
    std::shared_ptr<const Listener> listener;  // shared: copying it would run its owner's code
    CallbackThread thread;
  };

  SnapshotBoard board_;
  std::atomic<int> listenerCount_ = 0;
  std::mutex lock_;
  // Guarded by lock_.
  std::map<uint64_t, std::shared_ptr<Told>> listeners_;
  uint64_t lastNumber_ = 0;

  CallbackThread ticketCallbacks_;
};

}  // namespace velquin
