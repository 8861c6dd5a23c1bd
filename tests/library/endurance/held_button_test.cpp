// SPDX-License-Identifier: MIT
// A direction button held over a slow network, for a minute in the full length, eight seconds
// otherwise: the host reports it every 100 ms, the controller answers up to 400 ms late.
#include <windows.h>

#include <algorithm>
#include <random>

#include "tests/library/dll/driver_fixture.h"
#include "tests/support/run_length.h"

namespace {

class HeldButton : public DriverTest {
 protected:
  /// Replies to moves and polls that come 0 to 400 ms late, the same in every run.
  void AnswersSlowly() {
    std::mt19937 random(20261121);
    std::uniform_int_distribution<int> delayMs(0, 400);
    std::vector<simulator::ScriptedReply> moves;
    std::vector<simulator::ScriptedReply> polls;
    for (int i = 0; i < 400; ++i) {
      moves.push_back(simulator::Late("$MTMV2=1", delayMs(random)));
      polls.push_back(simulator::Late("$MTSTA=60310.5,1,0,0,0,45,0,0,6.0,22.5,4", delayMs(random)));
    }
    controller.AnswersInTurn("$MTMV2=", moves);
    controller.AnswersInTurn("$MTSTA?", polls);
  }

  std::vector<double> MoveTimesMs() {
    std::vector<double> times;
    for (const auto& datagram : controller.Received()) {
      if (datagram.text.rfind("$MTMV2=", 0) == 0) times.push_back(datagram.timeMs);
    }
    return times;
  }
};

TEST_F(HeldButton, NeverPilesUpMovesAndEndsSoonAfterTheLastPush) {
  StartSession();
  AnswersSlowly();
  const int pushes = IsFullLength() ? 600 : 80;
  constexpr DWORD kEveryMs = 100;  // the rhythm of the hand controller
  size_t movesAtLastPush = 0;
  for (int push = 0; push < pushes; ++push) {
    movesAtLastPush = MoveTimesMs().size();
    ASSERT_EQ(driver.Slew(nullptr, TELESCOPE_NORTH, 1, 4), 1);
    Sleep(kEveryMs);
  }
  driver.Slew(nullptr, TELESCOPE_NORTH, 0, 4);
  const auto received = controller.Received();
  ASSERT_FALSE(received.empty());
  const double releasedMs = received.back().timeMs;
  // The cycle at hand, the one move that may still wait, and a cycle more.
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", controller.CountOf("$MTSTA?") + 4, kSoonMs));
  const std::vector<double> times = MoveTimesMs();
  // All the pushes that one cycle saw became one move: at most one was ever waiting.
  EXPECT_LE(times.size(), movesAtLastPush + 2);
  EXPECT_LT(times.size(), static_cast<size_t>(pushes));
  ASSERT_GT(times.size(), static_cast<size_t>(pushes / 10));
  // A move lasts one second. The last one begins at most a cycle after the last push: two slow
  // exchanges and a sleep of 50 ms.
  constexpr double kLongestCycleMs = 2 * 400.0 + 50.0;
  EXPECT_LT(times.back(), releasedMs + kLongestCycleMs + 200.0);
  // While the button was held the mount never ran out of its second.
  for (size_t i = 1; i < times.size(); ++i) EXPECT_LT(times[i] - times[i - 1], 1000.0);
}

}  // namespace
