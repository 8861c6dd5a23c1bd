// SPDX-License-Identifier: MIT
#include "platform/clock.h"

#include <gtest/gtest.h>

#include <chrono>
#include <limits>

#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;
using std::chrono::steady_clock;

double Milliseconds(steady_clock::duration duration) {
  return std::chrono::duration<double, std::milli>(duration).count();
}

}  // namespace

TEST(ProcessClock, CountsMillisecondsOfWallTime) {
  const auto outerBegin = steady_clock::now();
  const int32_t before = platform::ProcessClockMs();
  const auto innerBegin = steady_clock::now();
  // The thread sleeps most of the time: processor time would hardly move.
  EXPECT_TRUE(Eventually([&] { return steady_clock::now() >= innerBegin + 150ms; }, 5s));
  const auto innerEnd = steady_clock::now();
  const int32_t after = platform::ProcessClockMs();
  const auto outerEnd = steady_clock::now();
  EXPECT_GE(after - before, Milliseconds(innerEnd - innerBegin) - 20.0);
  EXPECT_LE(after - before, Milliseconds(outerEnd - outerBegin) + 20.0);
}

TEST(ProcessClock, BeganWithTheProcess) {
  EXPECT_GE(platform::ProcessClockMs(), 0);
  EXPECT_LT(platform::ProcessClockMs(), 120000) << "the test program has just been started";
}

TEST(ProcessClock, NeverGoesBack) {
  int32_t last = platform::ProcessClockMs();
  for (int i = 0; i < 10000; ++i) {
    const int32_t now = platform::ProcessClockMs();
    ASSERT_GE(now, last);
    last = now;
  }
}

TEST(LocalTime, IsUndoneByTheRuntimeLibrary) {
  for (const int64_t time : {86400LL, 951782400LL, 1772744829LL, 1793000000LL, 4102444800LL}) {
    std::tm local = {};
    ASSERT_TRUE(platform::LocalTime(time, local)) << time;
    EXPECT_EQ(std::mktime(&local), time);
  }
}

TEST(LocalTime, SaysSoWhenATimeCannotBeConverted) {
  std::tm local = {};
  EXPECT_FALSE(platform::LocalTime(std::numeric_limits<int64_t>::max(), local));
}

#ifndef _WIN32

#include <cstdlib>

TEST(LocalTime, IsThatOfTheTimeZone) {
  const char* before = std::getenv("TZ");
  const std::string kept = before == nullptr ? "" : before;
  setenv("TZ", "JST-9", 1);
  tzset();
  std::tm local = {};
  EXPECT_TRUE(platform::LocalTime(1772712429, local));  // 2026-03-05 12:07:09 UTC
  EXPECT_EQ(local.tm_year, 126);
  EXPECT_EQ(local.tm_mon, 2);
  EXPECT_EQ(local.tm_mday, 5);
  EXPECT_EQ(local.tm_hour, 21);
  EXPECT_EQ(local.tm_min, 7);
  EXPECT_EQ(local.tm_sec, 9);
  before == nullptr ? unsetenv("TZ") : setenv("TZ", kept.c_str(), 1);
  tzset();
}

#endif
