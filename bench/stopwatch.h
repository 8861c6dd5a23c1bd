// SPDX-License-Identifier: MIT
// Timing for the benchmarks: medians of many single measurements, so that a noisy neighbour on the
// machine moves the result little.
#pragma once

#include <algorithm>
#include <chrono>
#include <vector>

/// @return nanoseconds that one call of `body` takes, from `repeats` calls in a row.
template <typename Body>
double NanosecondsPerCall(int repeats, Body body) {
  using Clock = std::chrono::steady_clock;
  const auto start = Clock::now();
  for (int i = 0; i < repeats; ++i) body();
  const std::chrono::duration<double, std::nano> elapsed = Clock::now() - start;
  return elapsed.count() / repeats;
}

inline double Median(std::vector<double> values) {
  std::nth_element(values.begin(), values.begin() + values.size() / 2, values.end());
  return values[values.size() / 2];
}
