// SPDX-License-Identifier: MIT
// How late this machine does what is due: a thread that wakes up every few milliseconds and sends
// itself a datagram, and notes how much longer that took. A bound on what a program does within a
// time is that time plus this delay. Any thread may ask.
#pragma once

#include <atomic>
#include <thread>

class MachineDelay {
 public:
  MachineDelay();
  ~MachineDelay();
  MachineDelay(const MachineDelay&) = delete;
  MachineDelay& operator=(const MachineDelay&) = delete;

  /// @return the longest delay since the object was made, milliseconds; one that lasts counts.
  double LongestMs() const;

 private:
  void Watch();

  std::atomic<bool> stopping_ = false;
  std::atomic<double> roundBeganMs_;
  std::atomic<double> longestMs_ = 0.0;  // written by thread_ only
  std::thread thread_;
};
