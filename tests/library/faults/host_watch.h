// SPDX-License-Identifier: MIT
// A host beside the one that a test plays: one thread reads the driver's state all the time, as a
// display does, another one stores texts and settings, both time every call, and a third one
// answers message boxes as a user does. Any thread may ask it.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/library/faults/link_model.h"
#include "tests/support/driver_library.h"

class HostWatch {
 public:
  /// @param driver outlives the watch @param nowMs the clock that box times are told by
  HostWatch(const DriverLibrary& driver, std::function<double()> nowMs);
  ~HostWatch();
  HostWatch(const HostWatch&) = delete;
  HostWatch& operator=(const HostWatch&) = delete;

  /// Makes a call that has to return at once, and notes how long it took.
  template <typename Function>
  int AtOnce(const char* name, Function function) {
    const double beginMs = nowMs_();
    const int result = function();
    Note(name, nowMs_() - beginMs);
    return result;
  }
  /// @return name and duration, milliseconds, of the call that took longest.
  std::pair<std::string, double> LongestCall() const;

  /// @return every position that the driver told to be valid, without repeats, in their order.
  std::vector<SkyPosition> Positions() const;

  /// @return when the last message box was seen, and answered at once; -1 when there was none.
  double BoxFoundMs() const { return boxFoundMs_; }

 private:
  void Read();
  void Store();
  void AnswerBoxes();
  void Note(const char* name, double durationMs);

  const DriverLibrary& driver_;
  const std::function<double()> nowMs_;
  std::atomic<bool> stopping_ = false;
  std::atomic<double> boxFoundMs_ = -1.0;

  mutable std::mutex lock_;
  // Guarded by lock_.
  std::pair<std::string, double> longestCall_ = {"none", 0.0};
  std::vector<SkyPosition> positions_;

  std::thread reader_;
  std::thread storer_;
  std::thread user_;
};
