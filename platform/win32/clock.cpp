// SPDX-License-Identifier: MIT
#include "platform/clock.h"

namespace platform {

static_assert(CLOCKS_PER_SEC == 1000, "clock() must count milliseconds");

int32_t ProcessClockMs() {
  return static_cast<int32_t>(clock());
}

bool LocalTime(int64_t secondsSince1970, std::tm& local) {
  const __time64_t time = secondsSince1970;
  return _localtime64_s(&local, &time) == 0;
}

}  // namespace platform
