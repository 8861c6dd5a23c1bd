// SPDX-License-Identifier: MIT
// ExchangeJournal: the failed exchanges of one mount, in the driver's wording. Any thread.
#pragma once

#include <cstdint>
#include <deque>
#include <mutex>
#include <string>

namespace velquin {

class ExchangeJournal {
 public:
  /// More than a day of a silent controller. Beyond that the oldest entries are dropped, so that a
  /// service can run without end.
  static constexpr size_t kMost = 100'000;

  /// @param startMs of the process's clock @param reason in the wording of the time-out journal
  void Record(const std::string& command, int32_t startMs, const char* reason);
  /// @return the number of entries.
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
