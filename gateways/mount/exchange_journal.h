// SPDX-License-Identifier: MIT
// ExchangeJournal: the failed exchanges of one mount, in the driver's own words. Any thread.
#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

namespace velquin {

class ExchangeJournal {
 public:
  /// More than a day of a silent controller; then the oldest go, so that a service may run for
  /// ever.
  static constexpr size_t kMost = 100'000;

  /// @param startMs of the process's clock @param reason as the time-out journal words it
  void Record(const std::string& command, int32_t startMs, const char* reason);
  /// @return how many are kept.
  size_t Count() const;
  /// Writes them to a new file as WriteTimeOutJournal does.
  void Write(const std::string& folder, const std::string& prefix) const;

 private:
  struct Entry {
    std::string command;
    int32_t startMs;
    const char* reason;
  };

  mutable std::mutex lock_;
  std::deque<Entry> entries_;  // guarded by lock_
};

}  // namespace velquin
