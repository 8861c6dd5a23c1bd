// SPDX-License-Identifier: MIT
// Waiting for something to become true, as long as needed and no longer.
#pragma once

#include <chrono>
#include <thread>

/// Waits until a condition holds.
/// @param predicate asked every 2 ms, at least once; it is called on the caller's thread
/// @param deadline  how long it may take
/// @return whether it came true in time
template <typename Predicate>
bool Eventually(Predicate predicate, std::chrono::milliseconds deadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!predicate()) {
    if (std::chrono::steady_clock::now() >= end) return predicate();
    std::this_thread::sleep_for(std::chrono::milliseconds(2));
  }
  return true;
}
