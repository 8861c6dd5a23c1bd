// SPDX-License-Identifier: MIT
// Every function after every other one, whatever order a host was meant to keep.
#include <windows.h>

#include <memory>

#include "tests/bad_calls/box_answerer.h"
#include "tests/bad_calls/host_calls.h"
#include "tests/dll/driver_fixture.h"
#include "tests/endurance/compressed_clock.h"

namespace {

using testing::AnyOfArray;

void HandleMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}

class CallOrder : public DriverTest {
 protected:
  /// Makes the calls of a walk and compares each answer with what the state allows.
  void Walk(const std::vector<size_t>& walk, bool inSession) {
    std::string before = "nothing";
    for (const size_t index : walk) {
      const HostCall& call = calls[index];
      const int32_t answer = call.call(driver);
      ASSERT_THAT(answer, AnyOfArray(inSession ? call.inSession : call.idle))
          << call.name << " after " << before << (inSession ? " in a session" : " without one");
      if (call.name == "Start") inSession = true;
      if (call.name == "End") inSession = false;
      before = call.name;
      HandleMessages();
    }
  }
  /// A walk through the functions in which each follows each, itself too, exactly once.
  std::vector<size_t> EveryPair() const {
    // Hierholzer's way through all arrows between the functions.
    std::vector<size_t> next(calls.size(), 0);
    std::vector<size_t> open = {0};
    std::vector<size_t> walk;
    while (!open.empty()) {
      const size_t at = open.back();
      if (next[at] < calls.size()) {
        open.push_back(next[at]++);
      } else {
        walk.push_back(at);
        open.pop_back();
      }
    }
    return {walk.rbegin(), walk.rend()};
  }
  /// The driver is as good as new: it ends, starts, and finds the mount.
  void WorksStill() {
    EXPECT_EQ(driver.End(nullptr), 1);
    HandleMessages();
    StartSession();
    EXPECT_TRUE(PollsAgain());
    EXPECT_EQ(driver.End(nullptr), 1);
  }

  const std::vector<HostCall> calls = AllHostCalls(controller.Address());
  const BoxAnswerer user;
  const CompressedClock clock;  // pulses and cycles take no time
};

TEST_F(CallOrder, TheListIsComplete) {
  EXPECT_EQ(calls.size(), 27u);
  const std::vector<size_t> walk = EveryPair();
  EXPECT_EQ(walk.size(), 27u * 27u + 1);
}

TEST_F(CallOrder, EveryPairFromALibraryThatWasJustLoaded) {
  Walk(EveryPair(), false);
  WorksStill();
}

TEST_F(CallOrder, EveryPairFromARunningSession) {
  StartSession();
  Walk(EveryPair(), true);
  WorksStill();
}

TEST_F(CallOrder, EveryPairAfterAnEnd) {
  StartSession();
  driver.End(nullptr);
  Walk(EveryPair(), false);
  WorksStill();
}

TEST(FreshLibrary, TakesAnyCallAsItsFirstTwo) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  for (const HostCall& call : AllHostCalls(controller.Address())) {
    const DriverLibrary driver;
    EXPECT_THAT(call.call(driver), AnyOfArray(call.idle)) << call.name;
    const bool inSession = call.name == "Start";
    EXPECT_THAT(call.call(driver), AnyOfArray(inSession ? call.inSession : call.idle)) << call.name;
    HandleMessages();
    EXPECT_EQ(driver.End(nullptr), 1);
    HandleMessages();
  }
  EXPECT_FALSE(DriverLibrary::IsLoaded());
}

}  // namespace
