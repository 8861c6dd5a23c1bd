// SPDX-License-Identifier: MIT
// How long a stop takes from the host's call to the wire when nothing goes wrong. It waits for the
// command that is being performed and for no other one: then come at most one poll and one sleep.
#include <cstdio>

#include "simulator/random_bits.h"
#include "tests/library/dll/driver_fixture.h"
#include "tests/library/faults/machine_delay.h"

namespace {

using testing::IsEmpty;

constexpr double kCycleMs = 100.0;   // the sleep between two cycles
constexpr double kStepsMs = 50.0;    // a poll that is answered at once, and the driver's own work
constexpr double kWindowMs = 500.0;  // to close a message box
const char* const kStop = "$MTSTP=1";

class StopDelay : public DriverTest {
 protected:
  /// @return when the first of these commands came, or -1.
  double TimeOf(const std::string& command) const {
    for (const auto& datagram : controller.Received()) {
      if (datagram.text.rfind(command, 0) == 0) return datagram.timeMs;
    }
    return -1.0;
  }
  /// The call, and the wait until the controller has the stop. @return when the host called
  double StopNow() {
    const double calledMs = controller.WireNowMs();
    driver.Stop(nullptr);
    EXPECT_TRUE(controller.WaitFor(kStop, kSoonMs));
    return calledMs;
  }
  /// With what the machine itself was late.
  double WithDelay(double limitMs) const { return limitMs + machine.LongestMs(); }

  MachineDelay machine;
};

TEST_F(StopDelay, IsOneCycleAtMostWhenNothingIsPerformed) {
  StartSession();
  double longestMs = 0.0;
  for (uint64_t i = 0; i < 12; ++i) {
    Sleep(simulator::RandomBits(1).Below(i, 120));  // somewhere in a cycle
    controller.Clear();
    const double calledMs = StopNow();
    longestMs = std::max(longestMs, TimeOf(kStop) - calledMs);
  }
  std::printf("a stop took %.0f ms at most\n", longestMs);
  EXPECT_LE(longestMs, WithDelay(kCycleMs + kStepsMs));
}

TEST_F(StopDelay, IsTheRestOfAPulseTrain) {
  StartSession();
  driver.SlewPulseDuration(nullptr, 300, 300, 300, 0, 0.5, 0.5);
  ASSERT_TRUE(controller.WaitFor("$MTMV2=", kSoonMs));
  const double calledMs = StopNow();
  const double trainMs = 3 * (300.0 + 50.0);
  const double tookMs = TimeOf(kStop) - TimeOf("$MTMV2=");
  std::printf("a stop at the beginning of pulses of %.0f ms took %.0f ms\n", trainMs,
              TimeOf(kStop) - calledMs);
  EXPECT_GE(tookMs, trainMs);
  EXPECT_LE(tookMs, WithDelay(trainMs + kCycleMs + 2 * kStepsMs));
  EXPECT_EQ(controller.CountOf("$MTMV2=0.300000,0.000000,0.500000"), 1);
}

TEST_F(StopDelay, IsAsLongAsAMessageOfTheWorkerIsOpen) {
  StartSession();
  driver.Look(nullptr, nullptr);
  const auto box = WaitForMessageBox(kSoon);
  ASSERT_TRUE(box);
  controller.Clear();
  driver.Stop(nullptr);
  EXPECT_FALSE(controller.WaitFor(kStop, 400)) << "the worker waits for the user";
  EXPECT_THAT(Requests(), IsEmpty());
  const double answeredMs = controller.WireNowMs();
  ASSERT_TRUE(PressOk(*box));
  ASSERT_TRUE(controller.WaitFor(kStop, kSoonMs));
  std::printf("a stop behind a message took %.0f ms from its answer\n", TimeOf(kStop) - answeredMs);
  EXPECT_LE(TimeOf(kStop) - answeredMs, WithDelay(kWindowMs + kCycleMs + kStepsMs));
  EXPECT_LE(controller.CountOf("$MTSTA?"), 2) << "one before the stop, one behind it at most";
}

}  // namespace
