// SPDX-License-Identifier: MIT
#include "gateways/mount/link_monitor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace velquin {

namespace {

// The smallest value that at least this share of the values does not exceed.
template <typename Iterator>
double Quantile(Iterator first, Iterator last, double share) {
  const auto count = static_cast<double>(last - first);
  const auto rank = std::max<ptrdiff_t>(static_cast<ptrdiff_t>(std::ceil(share * count)), 1);
  std::nth_element(first, first + rank - 1, last);
  return static_cast<double>(first[rank - 1]);
}

}  // namespace

void LinkMonitor::Answered(std::chrono::steady_clock::duration roundTrip) {
  Remember(false);
  const auto ms = std::chrono::duration<float, std::milli>(roundTrip).count();
  if (roundTripsMs_.size() < kRoundTrips) {
    roundTripsMs_.push_back(ms);
  } else {
    roundTripsMs_[nextRoundTrip_] = ms;
  }
  nextRoundTrip_ = (nextRoundTrip_ + 1) % kRoundTrips;
}

void LinkMonitor::Lost() {
  Remember(true);
  ++losses_;
}

void LinkMonitor::Remember(bool lost) {
  ++exchanges_;
  recentLosses_[nextRecent_] = lost;
  nextRecent_ = (nextRecent_ + 1) % kRecent;
}

bool LinkMonitor::PollWas(bool answered) {
  silentPolls_ = answered ? 0 : silentPolls_ + 1;
  return silentPolls_ >= kSilentPolls;
}

LinkHealth LinkMonitor::Health() const {
  LinkHealth health;
  health.exchanges = exchanges_;
  health.losses = losses_;
  health.quality = recentLosses_.any() ? LinkQuality::kShaky : LinkQuality::kGood;
  if (roundTripsMs_.empty()) return health;
  std::array<float, kRoundTrips> sorted = {};
  const auto end = std::copy(roundTripsMs_.begin(), roundTripsMs_.end(), sorted.begin());
  health.roundTripMedianMs = Quantile(sorted.begin(), end, 0.5);
  health.roundTripP99Ms = Quantile(sorted.begin(), end, 0.99);
  return health;
}

}  // namespace velquin
