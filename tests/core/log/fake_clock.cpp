// SPDX-License-Identifier: MIT
// What the linker puts in the place of the standard library's clock.
#include "tests/core/log/fake_clock.h"

#include <atomic>
#include <optional>

namespace {

using Clock = std::chrono::system_clock;

std::optional<Clock::time_point> standsAt;

}  // namespace

FakeClock::FakeClock(std::chrono::microseconds sinceEpoch) {
  MoveTo(sinceEpoch);
}

void FakeClock::MoveTo(std::chrono::microseconds sinceEpoch) {
  standsAt = Clock::time_point(std::chrono::duration_cast<Clock::duration>(sinceEpoch));
}

FakeClock::~FakeClock() {
  standsAt.reset();
}

Clock::time_point RealNow() noexcept __asm__("__real__ZNSt6chrono3_V212system_clock3nowEv");

Clock::time_point Now() noexcept __asm__("__wrap__ZNSt6chrono3_V212system_clock3nowEv");
Clock::time_point Now() noexcept {
  return standsAt ? *standsAt : RealNow();
}
