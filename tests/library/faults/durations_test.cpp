// SPDX-License-Identifier: MIT
// How long it takes until a host is told that the position is gone, until it has one again, and to
// begin anew.
#include <cstdio>

#include "tests/library/dll/driver_fixture.h"
#include "tests/library/faults/machine_delay.h"

namespace {

constexpr double kTickMs = 20.0;   // by which a wait or a sleep may be short
constexpr double kMercyMs = 60.0;  // a poll that is answered at once, and a look at it

class Durations : public DriverTest {
 protected:
  /// Waits for GetPos to say so. @return the milliseconds since the controller's time fromMs
  double UntilGetPosGives(int32_t answer, double fromMs) const {
    double radec[2];
    EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == answer; }, kLong));
    return controller.WireNowMs() - fromMs;
  }
  double TimeOfLastPoll() const {
    const auto received = controller.Received();
    EXPECT_FALSE(received.empty());
    return received.empty() ? 0.0 : received.back().timeMs;
  }
  /// With what the machine itself was late, at each of so many waits and sleeps.
  double WithDelay(double limitMs, int waits = 1) const {
    return limitMs + kMercyMs + waits * machine.LongestMs();
  }

  static constexpr std::chrono::seconds kLong{40};
  MachineDelay machine;
};

TEST_F(Durations, OfASilence) {
  StartSession();
  ASSERT_TRUE(PollsAgain());
  const double answeredMs = TimeOfLastPoll();
  controller.IsSilentTo("$MTSTA?");
  const double goneMs = UntilGetPosGives(0, answeredMs);
  std::printf("the position was gone after %.0f ms of silence\n", goneMs);
  // A poll may have been answered between the last one that was seen and the silence.
  EXPECT_GE(goneMs, 11 * 600.0 - kTickMs);
  EXPECT_LE(goneMs, WithDelay(11 * 600.0 + 100.0, 22));

  controller.Status("60000.5,1,0,0,0,45.0,10,20,6.0,22.5,4");
  const double backMs = UntilGetPosGives(1, controller.WireNowMs());
  std::printf("and back after %.0f ms\n", backMs);
  EXPECT_LE(backMs, WithDelay(600.0, 2)) << "the rest of a wait, and a sleep";
}

TEST_F(Durations, OfAClosedLink) {
  StartSession();
  controller.AnswersOnce("$MTSTA?", simulator::EmptyDatagram());
  const double goneMs = UntilGetPosGives(0, controller.WireNowMs());
  std::printf("the position was gone after %.0f ms\n", goneMs);
  EXPECT_GE(goneMs, 10 * 100.0 - kTickMs);
  EXPECT_LE(goneMs, WithDelay(11 * 100.0, 11));
}

TEST_F(Durations, OfAnEndAndAStart) {
  StartSession();
  double longestMs = 0.0;
  for (int i = 0; i < 10; ++i) {
    ASSERT_TRUE(PollsAgain());
    const double beganMs = controller.WireNowMs();
    ASSERT_EQ(driver.End(nullptr), 1);
    ASSERT_EQ(Start(), 1);
    longestMs = std::max(longestMs, controller.WireNowMs() - beganMs);
  }
  std::printf("an end and a start took %.0f ms at most\n", longestMs);
  EXPECT_LE(longestMs, WithDelay(200.0 - kMercyMs, 8)) << "a sleep, and seven exchanges";
}

}  // namespace
