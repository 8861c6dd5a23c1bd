// SPDX-License-Identifier: MIT
// How exactly guide pulses follow each other: trains of four pulses (north, south, east, west)
// through the built library, timed by the controller that receives them. After each pulse the
// driver waits for its length plus 50 ms.
#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "simulator/scripted_controller.h"
#include "tests/support/driver_library.h"

namespace {

constexpr int kGapMs = 50;

struct Train {
  int pulseMs;
  int repeats;
};

// Milliseconds by which each wait of one train was longer than its pulse and the gap.
std::vector<double> LatenessOfTrain(const DriverLibrary& driver,
                                    simulator::ScriptedController& controller, int pulseMs) {
  controller.Clear();
  driver.SlewPulseDuration(nullptr, pulseMs, pulseMs, pulseMs, pulseMs, 0.5, 0.5);
  controller.WaitForCount("$MTMV2=", 4, 5000 + 4 * pulseMs);
  controller.WaitFor("$MTSTA?", 5000);
  std::vector<double> lateness;
  double previousMs = -1.0;
  for (const auto& datagram : controller.Received()) {
    const bool isMove = datagram.text.rfind("$MTMV2=", 0) == 0;
    if (previousMs >= 0.0) lateness.push_back(datagram.timeMs - previousMs - pulseMs - kGapMs);
    previousMs = isMove ? datagram.timeMs : -1.0;
  }
  return lateness;
}

void Print(int pulseMs, std::vector<double> lateness) {
  std::sort(lateness.begin(), lateness.end());
  const auto at = [&](double share) {
    return lateness[static_cast<size_t>(share * static_cast<double>(lateness.size() - 1))];
  };
  std::printf("%5d ms: %4zu waits, late by %6.2f ms (median) %6.2f ms (99th percentile) ", pulseMs,
              lateness.size(), at(0.5), at(0.99));
  std::printf("%6.2f to %6.2f ms\n", lateness.front(), lateness.back());
  const double edges[] = {0.0, 0.5, 1.0, 2.0, 5.0, 10.0, 20.0, 1e9};
  double from = -1e9;
  for (const double to : edges) {
    const auto count = std::count_if(lateness.begin(), lateness.end(),
                                     [&](double late) { return late >= from && late < to; });
    std::printf(
        "          below %4.1f ms: %4d  %s\n", to, static_cast<int>(count),
        std::string(static_cast<size_t>(count * 50 / static_cast<long>(lateness.size())), '#')
            .c_str());
    from = to;
  }
}

}  // namespace

int main() {
  const DriverLibrary driver;
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  if (driver.Start(nullptr, controller.Address().c_str(), nullptr, 0) == 0) return 1;
  for (const Train& train : {Train{20, 60}, Train{100, 30}, Train{500, 10}, Train{1000, 6}}) {
    std::vector<double> all;
    for (int i = 0; i < train.repeats; ++i) {
      const std::vector<double> some = LatenessOfTrain(driver, controller, train.pulseMs);
      all.insert(all.end(), some.begin(), some.end());
    }
    Print(train.pulseMs, all);
  }
  driver.End(nullptr);
  return 0;
}
