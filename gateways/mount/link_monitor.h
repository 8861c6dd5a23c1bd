// SPDX-License-Identifier: MIT
// LinkMonitor: counts exchanges and judges the link by them. Pure; only the worker uses it, no
// lock.
#pragma once

#include <bitset>
#include <chrono>
#include <cstddef>
#include <vector>

#include "gateways/mount/snapshot.h"

namespace velquin {

class LinkMonitor {
 public:
  static constexpr size_t kRoundTrips = 256;  ///< in the median and 99th percentile
  static constexpr size_t kRecent = 20;       ///< exchanges that the quality is based on
  static constexpr int kSilentPolls = 3;      ///< in a row: the link is lost

  LinkMonitor() { roundTripsMs_.reserve(kRoundTrips); }

  /// Counts an exchange with a usable answer.
  void Answered(std::chrono::steady_clock::duration roundTrip);
  /// Counts an exchange without a usable answer.
  void Lost();
  /// Counts a status query, already counted as an exchange. @return true if the link is now lost.
  bool PollWas(bool answered);
  /// Resets the silent polls, not the figures.
  void LinkIsBack() { silentPolls_ = 0; }

  LinkHealth Health() const;

 private:
  void Remember(bool lost);

  std::vector<float> roundTripsMs_;  // the latest, in a ring
  size_t nextRoundTrip_ = 0;
  std::bitset<kRecent> recentLosses_;
  size_t nextRecent_ = 0;
  uint64_t exchanges_ = 0;
  uint64_t losses_ = 0;
  int silentPolls_ = 0;
};

}  // namespace velquin
