// SPDX-License-Identifier: MIT
// Every function after every other one, whatever order a host was meant to keep. The state is made
// anew for each pair: after a walk through all of them Start and End would have made it the same.
// What is checked: each call returns, with the one answer that is right in that state; and when a
// function has been followed by all others, a session still starts, polls and ends. After each pair
// that would take long. What the calls send is the business of other tests.
#include <windows.h>

#include <gmock/gmock.h>

#include <set>

#include "simulator/scripted_controller.h"
#include "tests/library/bad_calls/box_answerer.h"
#include "tests/library/bad_calls/host_calls.h"
#include "tests/library/endurance/compressed_clock.h"
#include "tests/support/eventually.h"
#include "tests/support/window_messages.h"

namespace {

using testing::AnyOfArray;

constexpr std::chrono::seconds kSoon{10};  // a deadline, not a wait
constexpr size_t kFunctions = 27;

// What is slept in place of cycles and pulses.
void SleepLittle(uint32_t /*ms*/) {
  Sleep(5);
}

class CallOrder : public testing::Test {
 protected:
  CallOrder() { controller.LooksLikeAMount(); }

  /// Makes two calls one after the other, compares each answer with the one of that state, and
  /// counts the pair. @param polled before the first
  void MakePair(const DriverLibrary& driver, size_t first, size_t second, bool inSession,
                Polled polled = Polled::kOnce) {
    ASSERT_NO_FATAL_FAILURE(MakeCall(driver, calls[first], "nothing", inSession, polled));
    if (calls[first].name == "Start") {
      inSession = true;
      // The first poll may be under way.
      if (polled == Polled::kNever) polled = Polled::kPerhaps;
    }
    if (calls[first].name == "End") inSession = false;
    ASSERT_NO_FATAL_FAILURE(MakeCall(driver, calls[second], calls[first].name, inSession, polled));
    covered.insert({first, second});
  }
  /// A session starts and finds the mount.
  void StartSession(const DriverLibrary& driver) {
    ASSERT_EQ(driver.Start(nullptr, controller.Address().c_str(), nullptr, 0), 1);
    const int polls = controller.CountOf("$MTSTA?");
    double radec[2];
    ASSERT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon));
    ASSERT_TRUE(Eventually([&] { return controller.CountOf("$MTSTA?") > polls; }, kSoon));
  }
  static void EndSession(const DriverLibrary& driver) {
    ASSERT_EQ(driver.End(nullptr), 1);
    HandleMessages();
  }
  /// For every pair. @param pair makes the state, and the two calls of these places in the list
  template <typename Pair>
  void ForEveryPair(Pair pair) {
    for (size_t first = 0; first < calls.size(); ++first) {
      for (size_t second = 0; second < calls.size(); ++second) {
        ASSERT_NO_FATAL_FAILURE(pair(first, second))
            << calls[first].name << ", " << calls[second].name;
        controller.Clear();
      }
    }
  }
  void ExpectAllCovered() const { EXPECT_EQ(covered.size(), kFunctions * kFunctions); }

  simulator::ScriptedController controller;
  const std::vector<HostCall> calls = AllHostCalls(controller.Address());
  const BoxAnswerer user;

 private:
  static void MakeCall(const DriverLibrary& driver, const HostCall& call, const std::string& before,
                       bool inSession, Polled polled) {
    ASSERT_THAT(call.call(driver), AnyOfArray(call.Answers(inSession, polled)))
        << call.name << " after " << before << (inSession ? " in a session" : " without one");
    HandleMessages();
  }
  std::set<std::pair<size_t, size_t>> covered;
};

TEST_F(CallOrder, TheListIsComplete) {
  std::set<std::string> names;
  for (const HostCall& call : calls) names.insert(call.name);
  EXPECT_EQ(names.size(), kFunctions);
  EXPECT_EQ(calls.size(), kFunctions);
}

TEST_F(CallOrder, EveryPairFromALibraryThatWasJustLoaded) {
  ForEveryPair([this](size_t first, size_t second) {
    // A window that an end left to this thread keeps the library until it is destroyed.
    ASSERT_TRUE(Eventually([] { return HandleMessages(), !DriverLibrary::IsLoaded(); }, kSoon));
    const DriverLibrary driver;
    MakePair(driver, first, second, false, Polled::kNever);
    EndSession(driver);
    if (second + 1 < calls.size()) return;
    StartSession(driver);
    EndSession(driver);
  });
  ExpectAllCovered();
}

TEST_F(CallOrder, EveryPairInASession) {
  const DriverLibrary driver;
  const CompressedClock clock(SleepLittle);
  bool inSession = false;
  ForEveryPair([&](size_t first, size_t second) {
    if (second == 0) {
      EndSession(driver);
      inSession = false;
    }
    if (!inSession) StartSession(driver);
    MakePair(driver, first, second, true);
    inSession = calls[second].name != "End" &&
                (calls[first].name != "End" || calls[second].name == "Start");
  });
  ExpectAllCovered();
  EndSession(driver);
  StartSession(driver);
  EndSession(driver);
}

TEST_F(CallOrder, EveryPairAfterAnEnd) {
  const DriverLibrary driver;
  const CompressedClock clock(SleepLittle);
  ForEveryPair([&](size_t first, size_t second) {
    EndSession(driver);
    if (second == 0) {
      StartSession(driver);
      EndSession(driver);
    }
    MakePair(driver, first, second, false);
  });
  ExpectAllCovered();
  EndSession(driver);
  StartSession(driver);
  EndSession(driver);
}

}  // namespace
