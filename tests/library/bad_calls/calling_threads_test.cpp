// SPDX-License-Identifier: MIT
// Every function from several threads at once, start and end among them, while a session comes and
// goes.
#include <windows.h>

#include <array>
#include <cstdio>
#include <random>

#include "tests/library/bad_calls/box_answerer.h"
#include "tests/library/bad_calls/host_calls.h"
#include "tests/library/dll/driver_fixture.h"
#include "tests/support/window_messages.h"

namespace {

class CallingThreads : public DriverTest {
 protected:
  static constexpr int kThreads = 6;

  /// One thread that calls what chance tells it. The position that it is told must be one that was
  /// read, or none, and never half of each.
  void CallAnything(int number, std::chrono::steady_clock::time_point end) {
    std::mt19937 random(static_cast<unsigned>(20261121 + number));
    while (std::chrono::steady_clock::now() < end) {
      // A window needs a thread that handles messages; the test's own thread has it.
      const HostCall& call = calls[random() % calls.size()];
      if (call.name == "Dialog") continue;
      current[static_cast<size_t>(number)] = call.name.c_str();
      if (!AnswersAsItMay(call)) ++wrongAnswers;
      double radec[2];
      driver.GetPos(nullptr, radec);
      const bool none = radec[0] == -1.0 && radec[1] == -1.0;
      const bool read = radec[0] == 90.0 && radec[1] == 22.5;
      if (!none && !read) ++tornPositions;
      ++callsMade;
    }
    current[static_cast<size_t>(number)] = nullptr;
  }
  /// @return whether it was an answer with or without a session: which of the two, only the threads
  /// know. A check knows no version while another thread's start is under way; at any other time it
  /// must.
  bool AnswersAsItMay(const HostCall& call) {
    const bool starts = call.name == "Start";
    const int startsEnded = startsOver;
    if (starts) ++startsBegun;
    const int32_t answer = call.call(driver);
    if (starts) ++startsOver;
    return answer == call.answer || answer == call.unpolledAnswer ||
           (call.startsSession && answer == 0) ||
           (call.name == "Check" && answer == 0 && startsBegun > startsEnded);
  }
  bool SomebodyCalls() const {
    return std::any_of(current.begin(), current.end(),
                       [](const auto& name) { return name != nullptr; });
  }
  /// Who hangs says in what, since nothing can be done for a thread that never comes back.
  void EndTheProgram() const {
    for (const auto& name : current) {
      if (name != nullptr) std::printf("still in Telescope%s\n", name.load());
    }
    std::fflush(stdout);
    std::abort();
  }

  const std::vector<HostCall> calls = AllHostCalls(controller.Address());
  const BoxAnswerer user;
  std::array<std::atomic<const char*>, kThreads> current = {};
  std::atomic<int> startsBegun = 0;
  std::atomic<int> startsOver = 0;
  std::atomic<int> callsMade = 0;
  std::atomic<int> wrongAnswers = 0;
  std::atomic<int> tornPositions = 0;
};

TEST_F(CallingThreads, AllFunctionsAtOnceNeitherHangNorLie) {
  const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(3);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    current[static_cast<size_t>(i)] = "";
    threads.emplace_back([this, i, end] { CallAnything(i, end); });
  }
  const auto deadline = end + std::chrono::minutes(1);
  for (int round = 0; SomebodyCalls(); ++round) {
    if (std::chrono::steady_clock::now() < end) driver.Dialog(nullptr, round % 3);
    HandleMessages();
    if (std::chrono::steady_clock::now() > deadline) EndTheProgram();
    Sleep(1);
  }
  for (std::thread& thread : threads) thread.join();
  std::printf("%d calls from %d threads\n", callsMade.load(), kThreads);
  EXPECT_GT(callsMade, 100);
  EXPECT_EQ(wrongAnswers, 0);
  EXPECT_EQ(tornPositions, 0);

  EXPECT_EQ(driver.End(nullptr), 1);
  StartSession();
  EXPECT_TRUE(PollsAgain());
  EXPECT_EQ(driver.Dialog(nullptr, 0), 1);
}

TEST_F(CallingThreads, OfManyStartsAtOnceOneSucceeds) {
  for (int round = 0; round < 20; ++round) {
    std::atomic<int> started = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&] { started += Start(); });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(started, 1) << "round " << round;
    threads.clear();
    std::atomic<int> ended = 0;
    for (int i = 0; i < kThreads; ++i) {
      threads.emplace_back([&] { ended += driver.End(nullptr); });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(ended, kThreads);
  }
  EXPECT_FALSE(FindMessageBox());
}

}  // namespace
