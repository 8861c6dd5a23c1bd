// SPDX-License-Identifier: MIT
// The worker's life: which hook runs when, and in which rhythm.
#include "library/engine/thread_ctrl.h"

#include <gmock/gmock.h>

#include <atomic>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "framework/base/exceptions.h"
#include "tests/library/engine/live_blocks.h"
#include "tests/library/engine/platform_wraps.h"
#include "tests/library/engine/telescope_probe.h"
#include "tests/support/eventually.h"

#ifdef _WIN32
#include <windows.h>
#endif

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

// Notes its hooks. Processes and polls as often as told, then the chosen hook ends the loop.
class NotingThread : public CThreadCtrl {
 public:
  ~NotingThread() override { EndThread(); }

  int OnProcess() override { return Note("process", --processesLeft > 0); }
  int OnPoll() override { return Note("poll", --pollsLeft > 0); }
  int OnStart() override { return Note("start", startResult); }
  int OnStarted() override { return Note("started", startedResult); }
  int OnEnd() override {
    processesLeft = 0;
    return Note("end", HasThread());
  }
  int OnEnded() override { return Note("ended", !HasThread()); }

  std::vector<std::string> Hooks() {
    const std::lock_guard guard(notesLock);
    return hooks;
  }
  // The thread each hook ran on, in the same order.
  std::vector<std::thread::id> Threads() {
    const std::lock_guard guard(notesLock);
    return threads;
  }
  int CountOf(const std::string& hook) {
    const std::vector<std::string> all = Hooks();
    return static_cast<int>(std::count(all.begin(), all.end(), hook));
  }
  bool HasThread() { return ThreadCtrlProbe(*this).HasThread(); }

  std::atomic<int> processesLeft = 1'000'000;
  std::atomic<int> pollsLeft = 1'000'000;
  int startResult = 1;
  int startedResult = 1;

 private:
  int Note(const char* hook, int result) {
    const std::lock_guard guard(notesLock);
    hooks.push_back(hook);
    threads.push_back(std::this_thread::get_id());
    return result;
  }

  std::mutex notesLock;
  std::vector<std::string> hooks;
  std::vector<std::thread::id> threads;
};

class ThreadCtrl : public testing::Test {
 protected:
  bool Runs(int polls) {
    return Eventually([&] { return worker.CountOf("poll") >= polls; }, 10s);
  }
  // Every sleep of a worker that polls so often.
  std::vector<int> SleepsOf(int polls) {
    worker.pollsLeft = polls;
    worker.StartThread();
    EXPECT_TRUE(Runs(polls));
    worker.EndThread();
    return platformCalls.Sleeps();
  }

  PlatformWraps platformCalls;
  NotingThread worker;
  ThreadCtrlProbe rhythm{worker};
};

TEST_F(ThreadCtrl, RunsTheHooksInTheirOrder) {
  worker.processesLeft = 3;
  EXPECT_EQ(worker.StartThread(), 1);
  EXPECT_TRUE(worker.HasThread());
  ASSERT_TRUE(Eventually([&] { return worker.CountOf("process") == 3; }, 10s));
  EXPECT_EQ(worker.EndThread(), 1);

  std::vector<std::string> hooks = worker.Hooks();
  EXPECT_EQ(hooks.at(0), "start");
  // The start's second hook runs beside the worker's first cycle.
  ASSERT_EQ(std::erase(hooks, "started"), 1u);
  EXPECT_THAT(
      hooks, ElementsAre("start", "process", "poll", "process", "poll", "process", "end", "ended"));
}

TEST_F(ThreadCtrl, RunsOnlyTheCycleOnItsOwnThread) {
  worker.processesLeft = 2;
  worker.StartThread();
  ASSERT_TRUE(Eventually([&] { return worker.CountOf("process") == 2; }, 10s));
  worker.EndThread();
  const std::vector<std::string> hooks = worker.Hooks();
  const std::vector<std::thread::id> threads = worker.Threads();
  for (size_t i = 0; i < hooks.size(); ++i) {
    const bool ofTheCycle = hooks[i] == "process" || hooks[i] == "poll";
    EXPECT_EQ(threads[i] != std::this_thread::get_id(), ofTheCycle) << hooks[i];
  }
}

TEST_F(ThreadCtrl, BeginsNothingWhenOnStartRefuses) {
  worker.startResult = 0;
  EXPECT_EQ(worker.StartThread(), 0);
  EXPECT_FALSE(worker.HasThread());
  EXPECT_THAT(worker.Hooks(), ElementsAre("start"));
}

TEST_F(ThreadCtrl, AnswersWithTheResultOfOnStartedAndRunsAnyhow) {
  worker.startedResult = 0;
  EXPECT_EQ(worker.StartThread(), 0);
  EXPECT_TRUE(worker.HasThread());
  EXPECT_TRUE(Runs(2));
}

TEST_F(ThreadCtrl, AnswersZeroWhenTheSystemHasNoThread) {
  platformCalls.HasNoThreads();
  EXPECT_EQ(worker.StartThread(), 0);
  EXPECT_FALSE(worker.HasThread());
  EXPECT_THAT(worker.Hooks(), ElementsAre("start"));
}

TEST_F(ThreadCtrl, EndsWithoutAThreadByRunningBothEndHooksOnce) {
  EXPECT_EQ(worker.EndThread(), 1);
  EXPECT_THAT(worker.Hooks(), ElementsAre("end", "ended"));
}

TEST_F(ThreadCtrl, JoinsAThreadThatEndedLongAgo) {
  worker.processesLeft = 1;
  worker.StartThread();
  ASSERT_TRUE(Eventually([&] { return worker.CountOf("process") == 1; }, 10s));
  std::this_thread::sleep_for(100ms);  // the thread itself is gone by now
  EXPECT_TRUE(worker.HasThread());
  EXPECT_EQ(worker.EndThread(), 1);
  EXPECT_FALSE(worker.HasThread());
}

TEST_F(ThreadCtrl, StartsAgainAfterItsEnd) {
  worker.StartThread();
  ASSERT_TRUE(Runs(1));
  worker.EndThread();
  const int polls = worker.CountOf("poll");
  worker.processesLeft = 1'000'000;
  EXPECT_EQ(worker.StartThread(), 1);
  EXPECT_TRUE(Runs(polls + 1));
}

TEST_F(ThreadCtrl, LeavesTheLoopWhenProcessingRefuses) {
  worker.processesLeft = 1;
  worker.StartThread();
  worker.EndThread();
  EXPECT_EQ(worker.CountOf("poll"), 0);
  EXPECT_THAT(platformCalls.Sleeps(), IsEmpty());
}

TEST_F(ThreadCtrl, LeavesTheLoopWithoutASleepWhenPollingRefuses) {
  EXPECT_THAT(SleepsOf(1), IsEmpty());
  EXPECT_EQ(worker.CountOf("process"), 1);
}

TEST_F(ThreadCtrl, LeavesTheLoopAfterTheSleepWhenNoLongerRunning) {
  class StopsItself : public CThreadCtrl {
   public:
    int OnPoll() override {
      ThreadCtrlProbe(*this).StopRunning();
      return 1;
    }
  } stopping;
  stopping.StartThread();
  stopping.EndThread();
  EXPECT_THAT(platformCalls.Sleeps(), ElementsAre(100));
}

TEST_F(ThreadCtrl, SleepsATenthOfASecondBetweenCycles) {
  EXPECT_EQ(worker.Period(), 100);
  EXPECT_THAT(SleepsOf(3), ElementsAre(100, 100));
}

TEST_F(ThreadCtrl, SleepsHalfAsLongInAHurry) {
  rhythm.SetFastPoll(1);
  EXPECT_THAT(SleepsOf(3), ElementsAre(50, 50));
}

TEST_F(ThreadCtrl, TakesAnyNumberButZeroForAHurry) {
  rhythm.SetFastPoll(-7);
  EXPECT_THAT(SleepsOf(2), ElementsAre(50));
}

TEST_F(ThreadCtrl, HalvesAnOddPeriodDownwards) {
  rhythm.SetPeriod(101);
  rhythm.SetFastPoll(1);
  EXPECT_THAT(SleepsOf(2), ElementsAre(50));
}

TEST_F(ThreadCtrl, IsNotInAHurryAtFirst) {
  EXPECT_EQ(rhythm.FastPoll(), 0);
}

TEST_F(ThreadCtrl, AnswersSuccessInTheHooksOfTheBase) {
  CThreadCtrl base;
  base.OnReset();
  EXPECT_EQ(base.OnPoll(), 1);
  EXPECT_EQ(base.OnProcess(), 1);
  EXPECT_EQ(base.OnStart(), 1);
  EXPECT_EQ(base.OnStarted(), 1);
  EXPECT_EQ(base.OnEnd(), 1);
  EXPECT_EQ(base.OnEnded(), 1);
}

TEST_F(ThreadCtrl, KeepsOthersOutBetweenLockAndUnlock) {
  worker.Lock();
  std::atomic<bool> inside = false;
  std::thread other([&] {
    worker.Lock();
    inside = true;
    worker.Unlock();
  });
  std::this_thread::sleep_for(50ms);
  EXPECT_FALSE(inside);
  worker.Unlock();
  other.join();
  EXPECT_TRUE(inside);
}

TEST_F(ThreadCtrl, CannotBeMadeWithoutALock) {
  platformCalls.HasNoLocks(8);  // out of memory
  try {
    CThreadCtrl without;
    ADD_FAILURE() << "was made";
  } catch (const CResourceException& error) {
    EXPECT_EQ(static_cast<uint32_t>(error.m_hr), 0x80070008u);
  }
}

TEST_F(ThreadCtrl, WaitsForItsWorkerWhenDestroyed) {
  // No member of the derived class is touched by then: its hooks are gone with it.
  struct Gates {
    std::promise<void> entered;
    std::promise<void> leave;
    std::atomic<bool> left = false;
  } gates;
  class Waiting : public CThreadCtrl {
   public:
    explicit Waiting(Gates& gates) : gates(gates) {}
    int OnProcess() override {
      Gates& mine = gates;
      mine.entered.set_value();
      mine.leave.get_future().wait();
      mine.left = true;
      return 0;
    }

   private:
    Gates& gates;
  };

  auto waiting = std::make_unique<Waiting>(gates);
  ASSERT_EQ(waiting->StartThread(), 1);
  gates.entered.get_future().wait();
  std::thread user([&] {
    std::this_thread::sleep_for(50ms);
    gates.leave.set_value();
  });
  waiting.reset();
  EXPECT_TRUE(gates.left);
  user.join();
}

HWND Handle(uintptr_t number) {
  return reinterpret_cast<HWND>(number);
}

TEST_F(ThreadCtrl, KeepsTheOwnerThatWasAttachedLast) {
  EXPECT_EQ(worker.OwnerWindow(), nullptr);
  worker.AttachOwner(Handle(0x1234));
  EXPECT_EQ(worker.OwnerWindow(), Handle(0x1234));
  worker.AttachOwner(Handle(0x5678));
  EXPECT_EQ(worker.OwnerWindow(), Handle(0x5678));
  worker.DetachOwner();
  EXPECT_EQ(worker.OwnerWindow(), nullptr);
  worker.DetachOwner();
  EXPECT_EQ(worker.OwnerWindow(), nullptr);
}

TEST_F(ThreadCtrl, KeepsNothingOfTheOwnersBefore) {
  worker.AttachOwner(Handle(0x1234));
  const int blocks = LiveBlocks();
  for (uintptr_t number = 1; number <= 100; ++number) worker.AttachOwner(Handle(number));
  EXPECT_EQ(LiveBlocks(), blocks);
  worker.DetachOwner();
  EXPECT_EQ(LiveBlocks(), blocks - 1);
}

#ifdef _WIN32
TEST_F(ThreadCtrl, LeavesTheHostsWindowAlone) {
  const HWND window = CreateWindowA("STATIC", "host", WS_OVERLAPPED, 0, 0, 10, 10, nullptr, nullptr,
                                    nullptr, nullptr);
  ASSERT_NE(window, nullptr);
  {
    CThreadCtrl ctrl;
    ctrl.AttachOwner(window);
    ctrl.AttachOwner(nullptr);
    ctrl.AttachOwner(window);
    ctrl.DetachOwner();
    ctrl.AttachOwner(window);
  }
  EXPECT_TRUE(IsWindow(window));
  DestroyWindow(window);
}
#endif

}  // namespace
