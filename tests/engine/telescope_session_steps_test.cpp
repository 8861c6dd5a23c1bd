// SPDX-License-Identifier: MIT
// The steps in which a session starts and ends, and what another thread finds between two of them.
#include <future>

#include "tests/engine/engine_fixture.h"

namespace {

// A loopback address where no controller of a test ever listens.
const char* const kNobody = "127.13.1.1";

class SessionSteps : public EngineTest {
 protected:
  /// Starts on another thread; on return it has begun and waits, at the latest, for the call that
  /// makes this one.
  void BeginStart(const char* address) {
    start = std::async(std::launch::async,
                       [this, address] { return telescope.Start(nullptr, address); });
    EXPECT_TRUE(Eventually([this] { return probe.SessionActive(); }, kSoon));
  }
  int Check() {
    return telescope.Check(nullptr, controller.Address().c_str(), version, sizeof version, nullptr);
  }

  std::future<int> start;
  char version[64] = "untouched";
};

// --- A start begins while a probe runs ---------------------------------------------------------

// A start that begins while the probe closes its link makes a session, of which nothing is known
// yet. The probe had its answer before.
TEST_F(SessionSteps, AnswersACheckThoughAStartBeginsWhileItCloses) {
  platformCalls.BeforeASocketCloses([this] { BeginStart(controller.Address().c_str()); });
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
  ASSERT_TRUE(start.valid());
  EXPECT_EQ(start.get(), 1);
}

// The start waits for the probe, and other checks already ask its session: they must not be told
// the version of the controller that the probe asks.
TEST_F(SessionSteps, AnswersNoCheckWithTheVersionOfAControllerThatOnlyAProbeAsked) {
  constexpr int kHandshake = 4;
  controller.SetFaults([this](int exchange, std::string_view) {
    if (exchange == kHandshake) BeginStart(kNobody);
    return simulator::Fault();
  });
  int answer = -1;
  char otherVersion[64] = "untouched";
  platformCalls.BeforeASocketCloses([&] {
    auto other = std::async(std::launch::async, [&] {
      return telescope.Check(nullptr, kNobody, otherVersion, sizeof otherVersion, nullptr);
    });
    answer = other.get();
  });
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(answer, 0);
  EXPECT_STREQ(otherVersion, "untouched");
  ASSERT_TRUE(start.valid());
  EXPECT_EQ(start.get(), 0);
}

}  // namespace
