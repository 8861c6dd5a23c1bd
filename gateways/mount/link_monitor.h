// SPDX-License-Identifier: MIT
// LinkMonitor: counts exchanges and judges the link by them. Pure; not locked: the worker's own.
#pragma once

#include <bitset>
#include <chrono>
#include <cstddef>
#include <vector>

#include "gateways/mount/snapshot.h"

namespace velquin {

class LinkMonitor {
 public:
  static constexpr size_t kRoundTrips = 256;  ///< of which median and 99th percentile are told
  static constexpr size_t kRecent = 20;       ///< exchanges that the quality looks at
  static constexpr int kSilentPolls = 3;      ///< in a row: the link is lost

  LinkMonitor() { roundTripsMs_.reserve(kRoundTrips); }

  /// An exchange with a usable answer.
  void Answered(std::chrono::steady_clock::duration roundTrip);
  /// An exchange without one.
  void Lost();
  /// A status query, after it was counted as an exchange. @return true when the link is now lost.
  bool PollWas(bool answered);
  /// Forgets the silent polls, not the figures.
  void LinkIsBack() { silentPolls_ = 0; }

  LinkHealth Health() const;

 private:
  void Remember(bool lost);

  std::vector<float> roundTripsMs_;  // the last ones, as a ring
  size_t nextRoundTrip_ = 0;
  std::bitset<kRecent> recentLosses_;
  size_t nextRecent_ = 0;
  uint64_t exchanges_ = 0;
  uint64_t losses_ = 0;
  int silentPolls_ = 0;
};

}  // namespace velquin
