// SPDX-License-Identifier: MIT
#include "platform/clock.h"

#include <chrono>

namespace platform {
namespace {

using Clock = std::chrono::steady_clock;

// POSIX clock() counts processor time; the driver needs the time since the process started.
const Clock::time_point processStart = Clock::now();

}  // namespace

int32_t ProcessClockMs() {
  using std::chrono::milliseconds;
  const auto elapsed = std::chrono::duration_cast<milliseconds>(Clock::now() - processStart);
  return static_cast<int32_t>(elapsed.count());
}

bool LocalTime(int64_t secondsSince1970, std::tm& local) {
  const std::time_t time = secondsSince1970;
  return localtime_r(&time, &local) != nullptr;
}

}  // namespace platform
