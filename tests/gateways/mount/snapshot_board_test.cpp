// SPDX-License-Identifier: MIT
#include "gateways/mount/snapshot_board.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>
#include <vector>

namespace {

using velquin::Snapshot;
using velquin::SnapshotBoard;

TEST(SnapshotBoard, ShowsTheLatest) {
  SnapshotBoard board;
  EXPECT_EQ(board.Latest().sequence, 0u);
  Snapshot snapshot;
  for (uint64_t i = 1; i < 100; ++i) {
    snapshot.sequence = i;
    board.Publish(snapshot);
    EXPECT_EQ(board.Latest().sequence, i);
  }
}

// A reader must never see half of one snapshot and half of the next, nor go back in time.
TEST(SnapshotBoard, NeverMixesTwoSnapshots) {
  constexpr uint64_t kLast = 100'000;
  velquin::BasicSnapshotBoard<2> board;
  Snapshot first;
  first.meridian.gotoDegrees = 0.0;
  board.Publish(first);
  std::atomic<int> torn = 0;
  std::vector<std::thread> readers;
  for (int i = 0; i < 3; ++i) {
    readers.emplace_back([&] {
      uint64_t last = 0;
      while (last < kLast) {
        const Snapshot seen = board.Latest();
        const auto sequence = static_cast<double>(seen.sequence);
        if (seen.position.raHours != sequence || seen.meridian.gotoDegrees != sequence) ++torn;
        if (seen.sequence < last) ++torn;
        last = seen.sequence;
      }
    });
  }
  Snapshot snapshot;
  for (uint64_t i = 0; i <= kLast; ++i) {
    snapshot.sequence = i;
    snapshot.position.raHours = static_cast<double>(i);
    snapshot.meridian.gotoDegrees = static_cast<double>(i);
    board.Publish(snapshot);
  }
  for (std::thread& reader : readers) reader.join();
  EXPECT_EQ(torn, 0);
}

}  // namespace
