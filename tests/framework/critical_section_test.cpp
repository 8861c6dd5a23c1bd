// SPDX-License-Identifier: MIT
#include "framework/base/critical_section.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "framework/base/exceptions.h"
#include "tests/framework/fake_platform.h"
#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;

HRESULT ErrorOfANewLock() {
  try {
    const CCriticalSection section;
  } catch (const CResourceException& exception) {
    return exception.m_hr;
  }
  ADD_FAILURE() << "the lock was made";
  return 0;
}

// The analysis of locks knows none that may be entered twice ...
VELQUIN_ANNOTATE(no_thread_safety_analysis) void EnterAgain(CCriticalSection& section) {
  section.Lock();
}

// ... and none that is left as often.
VELQUIN_ANNOTATE(no_thread_safety_analysis) void LeaveOnce(CCriticalSection& section) {
  section.Unlock();
}

}  // namespace

TEST(CriticalSection, LetsOneThreadInAtATime) {
  CCriticalSection section;
  int counter = 0;
  const auto count = [&] {
    for (int i = 0; i < 20000; ++i) {
      section.Lock();
      ++counter;
      section.Unlock();
    }
  };
  std::thread first(count);
  std::thread second(count);
  first.join();
  second.join();
  EXPECT_EQ(counter, 40000);
}

TEST(CriticalSection, MayBeEnteredAgainByItsOwner) {
  CCriticalSection section;
  section.Lock();
  EnterAgain(section);
  std::atomic<bool> entered = false;
  std::thread other([&] {
    section.Lock();
    entered = true;
    section.Unlock();
  });
  LeaveOnce(section);
  EXPECT_FALSE(Eventually([&] { return entered.load(); }, 50ms)) << "one Unlock is not enough";
  section.Unlock();
  EXPECT_TRUE(Eventually([&] { return entered.load(); }, 5s));
  other.join();
}

TEST(CriticalSection, IsHeldByASingleLockForTheLengthOfABlock) {
  CCriticalSection section;
  std::atomic<bool> entered = false;
  std::thread other;
  try {
    const CSingleLock hold(section);
    other = std::thread([&] {
      const CSingleLock alsoHold(section);
      entered = true;
    });
    EXPECT_FALSE(Eventually([&] { return entered.load(); }, 50ms));
    throw 1;
  } catch (int) {
  }
  EXPECT_TRUE(Eventually([&] { return entered.load(); }, 5s));
  other.join();
}

TEST(CriticalSection, ThrowsTheSystemsErrorWhenItCannotBeMade) {
  FakePlatform system;
  system.lockError = 8;  // not enough memory
  EXPECT_EQ(ErrorOfANewLock(), static_cast<HRESULT>(0x80070008u));
  system.lockError = 1450;  // not enough system resources
  EXPECT_EQ(ErrorOfANewLock(), static_cast<HRESULT>(0x800705AAu));
}
