// SPDX-License-Identifier: MIT
#include "platform/threads.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

bool threadsAreRefused = false;

struct Work {
  std::atomic<bool> mayEnd = true;
  std::atomic<bool> ended = false;
  std::atomic<uint64_t> number = 0;
};

void DoWork(void* parameter) {
  auto* work = static_cast<Work*>(parameter);
  work->number = platform::CurrentThreadNumber();
  Eventually([&] { return work->mayEnd.load(); }, 10s);
  work->ended = true;
}

double MillisecondsOf(void (*function)()) {
  const auto begin = steady_clock::now();
  function();
  return std::chrono::duration<double, std::milli>(steady_clock::now() - begin).count();
}

class RecursiveLock : public testing::Test {
 protected:
  void SetUp() override { ASSERT_NE(lock, nullptr) << error; }
  ~RecursiveLock() override { platform::DestroyRecursiveLock(lock); }

  uint32_t error = 77;
  platform::RecursiveLock* const lock = platform::CreateRecursiveLock(error);
};

}  // namespace

#ifdef _WIN32

#include <windows.h>

// The linker puts this pointer in the place of the imported function's.
extern "C" decltype(&CreateThread) __real___imp_CreateThread;

static HANDLE WINAPI MayCreateThread(LPSECURITY_ATTRIBUTES security, SIZE_T stack,
                                     LPTHREAD_START_ROUTINE routine, LPVOID parameter, DWORD flags,
                                     LPDWORD id) {
  if (threadsAreRefused) return nullptr;
  return __real___imp_CreateThread(security, stack, routine, parameter, flags, id);
}

extern "C" {
decltype(&CreateThread) __wrap___imp_CreateThread = MayCreateThread;
}

static uint64_t SystemThreadNumber() {
  return GetCurrentThreadId();
}

#else

#include <sys/syscall.h>
#include <unistd.h>

#include <system_error>

// The linker puts the second function in the place of the standard library's. What the thread is to
// do is a unique_ptr of a private type there, and so comes as an address.
void StartThread(std::thread* self, void* state, void (*depend)()) __asm__(
    "__real__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE");
void MayStartThread(std::thread* self, void* state, void (*depend)()) __asm__(
    "__wrap__ZNSt6thread15_M_start_threadESt10unique_ptrINS_6_StateESt14default_deleteIS1_EEPFvvE");
void MayStartThread(std::thread* self, void* state, void (*depend)()) {
  if (threadsAreRefused) {
    throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
  }
  StartThread(self, state, depend);
}

static uint64_t SystemThreadNumber() {
  return static_cast<uint64_t>(syscall(SYS_gettid));
}

#endif

TEST_F(RecursiveLock, LetsOneThreadInAtATime) {
  int counter = 0;
  const auto count = [&] {
    for (int i = 0; i < 20000; ++i) {
      platform::EnterRecursiveLock(lock);
      ++counter;
      platform::LeaveRecursiveLock(lock);
    }
  };
  std::thread first(count);
  std::thread second(count);
  first.join();
  second.join();
  EXPECT_EQ(counter, 40000);
}

TEST_F(RecursiveLock, MayBeEnteredAgainByItsOwner) {
  platform::EnterRecursiveLock(lock);
  platform::EnterRecursiveLock(lock);
  std::atomic<bool> entered = false;
  std::thread other([&] {
    platform::EnterRecursiveLock(lock);
    entered = true;
    platform::LeaveRecursiveLock(lock);
  });
  platform::LeaveRecursiveLock(lock);
  EXPECT_FALSE(Eventually([&] { return entered.load(); }, 50ms));
  platform::LeaveRecursiveLock(lock);
  EXPECT_TRUE(Eventually([&] { return entered.load(); }, 5s));
  other.join();
}

TEST(Threads, RunTheirRoutine) {
  Work work;
  platform::Thread* thread = platform::BeginThread(DoWork, &work);
  ASSERT_NE(thread, nullptr);
  platform::JoinThread(thread);
  EXPECT_TRUE(work.ended);
}

TEST(Threads, AreWaitedFor) {
  Work work;
  work.mayEnd = false;
  platform::Thread* thread = platform::BeginThread(DoWork, &work);
  ASSERT_NE(thread, nullptr);
  std::thread ender([&] {
    EXPECT_FALSE(Eventually([&] { return work.ended.load(); }, 50ms));
    work.mayEnd = true;
  });
  platform::JoinThread(thread);
  EXPECT_TRUE(work.ended);
  ender.join();
}

TEST(Threads, CanBeJoinedLongAfterTheirEnd) {
  Work work;
  platform::Thread* thread = platform::BeginThread(DoWork, &work);
  ASSERT_NE(thread, nullptr);
  ASSERT_TRUE(Eventually([&] { return work.ended.load(); }, 5s));
  platform::SleepMs(30);
  platform::JoinThread(thread);
}

TEST(Threads, AreNullWhenTheSystemRefusesThem) {
  Work work;
  threadsAreRefused = true;
  platform::Thread* thread = platform::BeginThread(DoWork, &work);
  threadsAreRefused = false;
  EXPECT_EQ(thread, nullptr);
  EXPECT_FALSE(work.ended);
}

TEST(Threads, HaveTheSystemsNumbers) {
  const uint64_t own = platform::CurrentThreadNumber();
  EXPECT_EQ(own, SystemThreadNumber());
  Work work;
  platform::Thread* thread = platform::BeginThread(DoWork, &work);
  ASSERT_NE(thread, nullptr);
  platform::JoinThread(thread);
  EXPECT_NE(work.number, 0u);
  EXPECT_NE(work.number, own);
  EXPECT_EQ(platform::CurrentThreadNumber(), own);
}

TEST(Threads, SleepAsLongAsTheyAreTold) {
  EXPECT_GE(MillisecondsOf([] { platform::SleepMs(50); }), 49.0);
}

TEST(Threads, DoNotSleepForNothing) {
  EXPECT_LT(MillisecondsOf([] {
              platform::SleepMs(0);
              platform::SleepMs(-1);
              platform::SleepMs(INT32_MIN);
            }),
            5000.0);
}

TEST(ThreadSlots, HoldOneValuePerThread) {
  platform::ThreadSlot* slot = platform::CreateThreadSlot();
  ASSERT_NE(slot, nullptr);
  int here = 0;
  int there = 0;
  EXPECT_EQ(platform::GetThreadSlot(slot), nullptr);
  platform::SetThreadSlot(slot, &here);
  std::thread([&] {
    EXPECT_EQ(platform::GetThreadSlot(slot), nullptr);
    platform::SetThreadSlot(slot, &there);
    EXPECT_EQ(platform::GetThreadSlot(slot), &there);
  }).join();
  EXPECT_EQ(platform::GetThreadSlot(slot), &here);
  platform::DestroyThreadSlot(slot);
}

TEST(ThreadSlots, AreIndependentOfEachOther) {
  platform::ThreadSlot* first = platform::CreateThreadSlot();
  platform::ThreadSlot* second = platform::CreateThreadSlot();
  ASSERT_NE(first, second);
  int value = 0;
  platform::SetThreadSlot(first, &value);
  EXPECT_EQ(platform::GetThreadSlot(second), nullptr);
  EXPECT_EQ(platform::GetThreadSlot(first), &value);
  platform::DestroyThreadSlot(first);
  platform::DestroyThreadSlot(second);
}

// The system has about a thousand in all.
TEST(ThreadSlots, AreGivenBack) {
  for (int i = 0; i < 5000; ++i) {
    platform::ThreadSlot* slot = platform::CreateThreadSlot();
    ASSERT_NE(slot, nullptr) << i;
    ASSERT_EQ(platform::GetThreadSlot(slot), nullptr) << i;
    platform::SetThreadSlot(slot, &i);
    platform::DestroyThreadSlot(slot);
  }
  platform::DestroyThreadSlot(nullptr);
}

TEST(ThreadSlots, AreNullWhenThereAreNoneLeft) {
  std::vector<platform::ThreadSlot*> slots;
  for (platform::ThreadSlot* slot = platform::CreateThreadSlot(); slot != nullptr;
       slot = platform::CreateThreadSlot()) {
    slots.push_back(slot);
    ASSERT_LT(slots.size(), 100000u);
  }
  for (platform::ThreadSlot* slot : slots) platform::DestroyThreadSlot(slot);
  platform::ThreadSlot* slot = platform::CreateThreadSlot();
  EXPECT_NE(slot, nullptr);
  platform::DestroyThreadSlot(slot);
}

#ifdef _WIN32

TEST(ThreadSlots, LeaveTheHostsLastErrorAlone) {
  platform::ThreadSlot* slot = platform::CreateThreadSlot();
  SetLastError(4711);
  platform::GetThreadSlot(slot);
  EXPECT_EQ(GetLastError(), 4711u);
  platform::DestroyThreadSlot(slot);
}

#endif
