// SPDX-License-Identifier: MIT
#include "tests/library/endurance/compressed_clock.h"

#include <atomic>
#include <ctime>
#include <utility>

namespace {

std::atomic<int64_t> skippedMs = 0;
CompressedClock::AtSleep sleepHook;

clock_t LibraryClock() {
  return static_cast<clock_t>(std::clock() + skippedMs);
}

void WINAPI LibrarySleep(DWORD ms) {
  skippedMs += ms;
  if (sleepHook) sleepHook(ms);
  Sleep(0);
}

}  // namespace

CompressedClock::CompressedClock(AtSleep atSleep)
    : sleep_("Sleep", reinterpret_cast<void*>(&LibrarySleep)),
      clock_("clock", reinterpret_cast<void*>(&LibraryClock)) {
  skippedMs = 0;
  sleepHook = std::move(atSleep);
}

double CompressedClock::Seconds() {
  return static_cast<double>(LibraryClock()) / CLOCKS_PER_SEC;
}
