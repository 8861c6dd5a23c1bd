// SPDX-License-Identifier: MIT
// How long an end waits for what the worker has begun and for what is queued, while the controller
// is silent or a pulse runs: the table of docs/hosts.md.
#include <algorithm>
#include <cstdio>

#include "tests/library/dll/driver_fixture.h"
#include "tests/library/faults/machine_delay.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

constexpr double kPatienceMs = 500.0;  // of an exchange
constexpr double kSleepMs = 100.0;     // between two cycles
constexpr double kWorkMs = 100.0;      // the journal's file, the thread's end
// What the worker may have begun when the end is called, and its sleep.
constexpr double kBegunMs = kPatienceMs + kSleepMs;

class EndDelay : public DriverTest {
 protected:
  void StartAndFallSilent() {
    StartSession();
    controller.SetFaults([](int, std::string_view) { return simulator::Fault{.silence = true}; });
  }
  /// @return how long the call took, milliseconds.
  double End(const char* what) {
    const double calledMs = controller.WireNowMs();
    driver.End(nullptr);
    const double tookMs = controller.WireNowMs() - calledMs;
    std::printf("an end with %s took %.0f ms\n", what, tookMs);
    return tookMs;
  }
  void ExpectWithin(double tookMs, double limitMs) const {
    EXPECT_LE(tookMs, limitMs + kWorkMs + machine.LongestMs());
  }

  MachineDelay machine;
};

TEST_F(EndDelay, IsOnePollAndOneSleepWhenNothingIsQueued) {
  StartAndFallSilent();
  ExpectWithin(End("nothing to do"), kBegunMs);
  EXPECT_THAT(Requests(), IsEmpty());
  EXPECT_LE(controller.CountOf("$MTSTA?"), 1);
}

TEST_F(EndDelay, IsHalfASecondForEachGotoOfTheQueue) {
  const double target[2] = {83.633, 22.0145};
  StartAndFallSilent();
  for (int i = 0; i < 5; ++i) driver.Look(nullptr, target);
  const double tookMs = End("five gotos");
  EXPECT_EQ(controller.CountOf("$MTTGT="), 5);
  EXPECT_GE(tookMs, 5 * kPatienceMs - kSleepMs);
  ExpectWithin(tookMs, kBegunMs + 5 * kPatienceMs);
}

TEST_F(EndDelay, IsTwoExchangesBehindAStopThatEmptiesTheQueue) {
  const double target[2] = {83.633, 22.0145};
  StartAndFallSilent();
  for (int i = 0; i < 5; ++i) driver.Look(nullptr, target);
  driver.Stop(nullptr);
  const double tookMs = End("a stop");
  EXPECT_LE(controller.CountOf("$MTTGT="), 1) << "the one that was being taken";
  EXPECT_EQ(controller.CountOf("$MTSTP=1"), 1);
  EXPECT_EQ(controller.CountOf("$MTMV2="), 1);
  EXPECT_GE(tookMs, 2 * kPatienceMs - kSleepMs);
  ExpectWithin(tookMs, kBegunMs + 2 * kPatienceMs);
}

TEST_F(EndDelay, IsFiveExchangesForSiteAndClock) {
  const SiteTime time = {2024, 1, 15, 21, 7, 30.0, 9.0};
  const SiteLocation site = {35.681, 139.767, 40.0};
  StartAndFallSilent();
  driver.BaseSetting(nullptr, &time, &site);
  const double tookMs = End("site and clock");
  // Site, clock, the start-up, since the clocks differ, and the site again; the clock is not asked
  // for when the site is not answered. Before them comes the status, after the poll that was under
  // way.
  EXPECT_THAT(Requests(), ElementsAre(StartsWith("$SYLOC="), StartsWith("$SYLTM="),
                                      StartsWith("$MTINI="), "$SYLOC?\r\n"));
  const int polls = controller.CountOf("$MTSTA?");
  EXPECT_GE(polls, 1);
  EXPECT_LE(polls, 2);
  EXPECT_GE(tookMs, 5 * kPatienceMs - kSleepMs);
  ExpectWithin(tookMs, kBegunMs + 5 * kPatienceMs);
}

TEST_F(EndDelay, IsTheRestOfAPulse) {
  StartSession();
  driver.SlewPulseDuration(nullptr, 2000, 0, 0, 0, 0.5, 0.5);
  ASSERT_TRUE(controller.WaitFor("$MTMV2=", kSoonMs));
  const double tookMs = End("a pulse of 2 s");
  EXPECT_GE(tookMs, 2000.0 - kSleepMs - machine.LongestMs());
  ExpectWithin(tookMs, 2000.0 + 50.0 + kSleepMs);
}

}  // namespace
