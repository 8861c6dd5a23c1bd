// SPDX-License-Identifier: MIT
#include "framework/base/win_thread.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>

#include "framework/base/module_state.h"
#include "platform/threads.h"
#include "tests/framework/fake_platform.h"
#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;

// What a thread routine sees and does.
struct Work {
  std::atomic<bool> mayEnd = true;
  std::atomic<bool> ended = false;
  uint64_t threadNumber = 0;
  AFX_MODULE_STATE* state = nullptr;
};

UINT DoWork(LPVOID parameter) {
  auto* work = static_cast<Work*>(parameter);
  work->threadNumber = platform::CurrentThreadNumber();
  work->state = AfxGetModuleState();
  Eventually([&] { return work->mayEnd.load(); }, 10s);
  work->ended = true;
  return 0;
}

}  // namespace

TEST(WinThread, RunsItsRoutineOnAThreadOfItsOwn) {
  Work work;
  const std::unique_ptr<CWinThread> thread(AfxBeginThread(DoWork, &work));
  ASSERT_NE(thread, nullptr);
  thread->Join();
  EXPECT_TRUE(work.ended);
  EXPECT_NE(work.threadNumber, 0u);
  EXPECT_NE(work.threadNumber, platform::CurrentThreadNumber());
}

TEST(WinThread, IsWaitedForByJoin) {
  Work work;
  work.mayEnd = false;
  const std::unique_ptr<CWinThread> thread(AfxBeginThread(DoWork, &work));
  ASSERT_NE(thread, nullptr);
  EXPECT_FALSE(Eventually([&] { return work.ended.load(); }, 50ms)) << "it has not begun to wait";
  work.mayEnd = true;
  thread->Join();
  EXPECT_TRUE(work.ended);
}

TEST(WinThread, IsWaitedForByItsDestructor) {
  Work work;
  work.mayEnd = false;
  std::unique_ptr<CWinThread> thread(AfxBeginThread(DoWork, &work));
  ASSERT_NE(thread, nullptr);
  const std::unique_ptr<CWinThread> ender(AfxBeginThread(
      [](LPVOID parameter) -> UINT {
        platform::SleepMs(30);
        static_cast<Work*>(parameter)->mayEnd = true;
        return 0;
      },
      &work));
  thread.reset();
  EXPECT_TRUE(work.ended);
}

// The object outlives the thread, however long ago that ended.
TEST(WinThread, CanBeJoinedLongAfterItsEnd) {
  for (int i = 0; i < 20; ++i) {
    Work work;
    const std::unique_ptr<CWinThread> thread(AfxBeginThread(DoWork, &work));
    ASSERT_NE(thread, nullptr);
    ASSERT_TRUE(Eventually([&] { return work.ended.load(); }, 5s));
    platform::SleepMs(5);
    thread->Join();
    thread->Join();
  }
}

TEST(WinThread, HasTheModuleStateOfWhoBeganIt) {
  AFX_MODULE_STATE state;
  Work work;
  AFX_MANAGE_STATE(&state);
  const std::unique_ptr<CWinThread> thread(AfxBeginThread(DoWork, &work));
  ASSERT_NE(thread, nullptr);
  thread->Join();
  EXPECT_EQ(work.state, &state);
}

TEST(WinThread, IsNullWhenTheSystemHasNoThread) {
  FakePlatform system;
  system.noThreads = true;
  Work work;
  EXPECT_EQ(AfxBeginThread(DoWork, &work), nullptr);
  EXPECT_FALSE(work.ended);
}
