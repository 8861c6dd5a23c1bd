// SPDX-License-Identifier: MIT
// SnapshotBoard: one thread publishes snapshots, and any number of threads copy the latest one
// without waiting. A reader takes no lock, and a writer that the system has interrupted does not
// delay it: the writer fills the place that was published longest ago. A reader copies again only
// if it is itself interrupted while seven snapshots are published.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <type_traits>

#include "gateways/mount/snapshot.h"

namespace velquin {

/// @tparam kPlaces number of snapshots; tests use few, so that readers and the writer meet
template <uint32_t kPlaces>
class BasicSnapshotBoard {
 public:
  BasicSnapshotBoard() { Publish(Snapshot{}); }
  BasicSnapshotBoard(const BasicSnapshotBoard&) = delete;
  BasicSnapshotBoard& operator=(const BasicSnapshotBoard&) = delete;

  /// One thread at a time.
  void Publish(const Snapshot& snapshot) {
    Words words = {};
    std::memcpy(words.data(), &snapshot, sizeof snapshot);
    const uint32_t next = (latest_.load(std::memory_order_relaxed) + 1) % kPlaces;
    Place& place = places_[next];
    const uint64_t version = place.version.load(std::memory_order_relaxed);
    place.version.store(version + 1, std::memory_order_relaxed);  // odd: being written
    std::atomic_thread_fence(std::memory_order_release);
    for (size_t i = 0; i < kWords; ++i) place.words[i].store(words[i], std::memory_order_relaxed);
    place.version.store(version + 2, std::memory_order_release);
    latest_.store(next, std::memory_order_release);
  }

  /// Any thread.
  Snapshot Latest() const {
    for (;;) {
      const Place& place = places_[latest_.load(std::memory_order_acquire)];
      const uint64_t before = place.version.load(std::memory_order_acquire);
      Words words;
      for (size_t i = 0; i < kWords; ++i) words[i] = place.words[i].load(std::memory_order_relaxed);
      std::atomic_thread_fence(std::memory_order_acquire);
      if (before % 2 != 0 || before != place.version.load(std::memory_order_relaxed)) continue;
      Snapshot snapshot;
      std::memcpy(static_cast<void*>(&snapshot), words.data(), sizeof snapshot);
      return snapshot;
    }
  }

 private:
  static_assert(std::is_trivially_copyable_v<Snapshot>);
  static constexpr size_t kWords = (sizeof(Snapshot) + sizeof(uint64_t) - 1) / sizeof(uint64_t);
  using Words = std::array<uint64_t, kWords>;
  struct Place {
    std::atomic<uint64_t> version = 0;
    std::array<std::atomic<uint64_t>, kWords> words = {};
  };

  std::array<Place, kPlaces> places_;
  std::atomic<uint32_t> latest_ = 0;
};

using SnapshotBoard = BasicSnapshotBoard<8>;

}  // namespace velquin
