// SPDX-License-Identifier: MIT
// The linker lets calls of CTelescope::Slew pass here.
#include "tests/library/ui/slew_calls.h"

#include <mutex>

#include "library/engine/telescope.h"

namespace ui_test {
namespace {

std::mutex lock;
std::vector<SlewCall> calls;
std::vector<std::chrono::steady_clock::time_point> times;

void Keep(const SlewCall& call) {
  const std::lock_guard guard(lock);
  calls.push_back(call);
  times.push_back(std::chrono::steady_clock::now());
}

}  // namespace

std::vector<SlewCall> SlewCalls() {
  const std::lock_guard guard(lock);
  return calls;
}

std::vector<std::chrono::steady_clock::time_point> SlewCallTimes() {
  const std::lock_guard guard(lock);
  return times;
}

void ClearSlewCalls() {
  const std::lock_guard guard(lock);
  calls.clear();
  times.clear();
}

}  // namespace ui_test

// The names that the linker gives to the function and to its stand-in.
extern "C" {
int __real__ZN10CTelescope4SlewEiii(CTelescope* engine, int32_t direction, int32_t push,
                                    int32_t speed);
int __wrap__ZN10CTelescope4SlewEiii(CTelescope* engine, int32_t direction, int32_t push,
                                    int32_t speed);

int __wrap__ZN10CTelescope4SlewEiii(CTelescope* engine, int32_t direction, int32_t push,
                                    int32_t speed) {
  ui_test::Keep({direction, push, speed});
  return __real__ZN10CTelescope4SlewEiii(engine, direction, push, speed);
}
}
