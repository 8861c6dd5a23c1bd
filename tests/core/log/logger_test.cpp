// SPDX-License-Identifier: MIT
#include "core/log/logger.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <ctime>
#include <sstream>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include "platform/threads.h"
#include "tests/core/log/fake_clock.h"
#include "tests/support/file_text.h"
#include "tests/support/local_time.h"
#include "tests/support/pattern.h"
#include "tests/support/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using logging::orlin::Logger;
using testing::ElementsAre;
using testing::EndsWith;

#ifdef _WIN32
const std::string kLineEnd = "\r\n";
#else
const std::string kLineEnd = "\n";
#endif

// Not per thread: what the compiler needs for that takes a lock itself.
std::atomic<bool> locksFail = false;

constexpr auto kAsked = 1709640429042000us;
constexpr auto kGiven = 1709640429942000us;

// Stands at kGiven once a lock has been taken.
std::atomic<FakeClock*> movedByLocks = nullptr;

// What the local clock shows at a time, written by other means.
std::string LocalClock(std::time_t time) {
  const std::tm local = LocalTimeAt(time);
  char text[40];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d", local.tm_year + 1900,
                local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec);
  return text;
}

std::string ThisThread() {
  return std::to_string(platform::CurrentThreadNumber());
}

class LoggerFile : public testing::Test {
 protected:
  std::string Bytes() { return ReadWholeFile(folder / "it.log").value_or("no such file"); }
  std::vector<std::string> Lines() {
    std::vector<std::string> lines;
    std::string bytes = Bytes();
    for (size_t end; (end = bytes.find(kLineEnd)) != std::string::npos;) {
      lines.push_back(bytes.substr(0, end));
      bytes.erase(0, end + kLineEnd.size());
    }
    EXPECT_EQ(bytes, "") << "a line without end";
    return lines;
  }

  TempFolder folder{u8"-記録"};
  const std::wstring path = folder.Wide("it.log");
};

}  // namespace

// The linker puts the second function in the place of the system's.
extern "C" {
int __real_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex);
int __wrap_pthread_mutex_lock(pthread_mutex_t* mutex) {
  if (locksFail) return EDEADLK;
  if (FakeClock* clock = movedByLocks) clock->MoveTo(kGiven);
  return __real_pthread_mutex_lock(mutex);
}
}

TEST_F(LoggerFile, HasALineOfTimeThreadLevelAndMessage) {
  Logger logger(path);
  ASSERT_TRUE(logger.IsOpen());
  {
    const FakeClock clock(1709640429042999us);  // 2024-03-05 12:07:09 UTC and 42.999 ms
    logger.Log("INFO", "Open:");
  }
  EXPECT_EQ(Bytes(), LocalClock(1709640429) + ".042:" + ThisThread() + ":INFO:Open:" + kLineEnd);
}

TEST_F(LoggerFile, HasTheTimeOfTheCall) {
  Logger logger(path);
  const std::string before = Logger::MakeTimeStamp();
  logger.Log("INFO", "Close");
  const std::string after = Logger::MakeTimeStamp();
  ASSERT_EQ(Lines().size(), 1u);
  const std::string line = Lines()[0];
  EXPECT_TRUE(FitsPattern(line, R"(\d{4}-\d\d-\d\dT\d\d:\d\d:\d\d\.\d{3}:\d+:INFO:Close)")) << line;
  EXPECT_THAT(line, EndsWith(":INFO:Close"));
  EXPECT_LE(before, line.substr(0, before.size()));
  EXPECT_LE(line.substr(0, before.size()), after);
}

TEST_F(LoggerFile, HasThreeDigitsOfMilliseconds) {
  Logger logger(path);
  const FakeClock clock(1709640429007000us);
  logger.Log("INFO", "x");
  EXPECT_EQ(Bytes().substr(19, 5), ".007:");
}

TEST_F(LoggerFile, HasEveryLineAtOnce) {
  Logger logger(path);
  logger.Log("INFO", "Open:");
  EXPECT_EQ(Lines().size(), 1u);
  logger.Log("INFO", "Close");
  EXPECT_EQ(Lines().size(), 2u);
}

TEST_F(LoggerFile, HasTheMessageAsItIs) {
  Logger logger(path);
  const std::string longText(10000, 'x');
  logger.Log("%d", "100%s %n\\");
  logger.Log("INFO", longText);
  logger.Log("INFO", "");
  EXPECT_THAT(Lines(), ElementsAre(EndsWith(":%d:100%s %n\\"), EndsWith(":INFO:" + longText),
                                   EndsWith(":INFO:")));
}

TEST_F(LoggerFile, IsEmptiedWhenOpened) {
  WriteWholeFile(folder / "it.log", "what an earlier load has left");
  const Logger logger(path);
  EXPECT_TRUE(logger.IsOpen());
  EXPECT_EQ(Bytes(), "");
}

TEST_F(LoggerFile, MayBeOpenedTwice) {
  Logger first(path);
  first.Log("INFO", "first");
  Logger second(path);
  ASSERT_TRUE(second.IsOpen());
  EXPECT_EQ(Bytes(), "");
  second.Log("INFO", "second");
  EXPECT_THAT(Lines(), ElementsAre(EndsWith(":INFO:second")));
}

TEST_F(LoggerFile, IsNotOpenWhereItCannotBe) {
  EXPECT_FALSE(Logger(std::wstring()).IsOpen());
  EXPECT_FALSE(Logger(folder.Wide("missing/it.log")).IsOpen());
  EXPECT_FALSE(Logger(folder.Wide()).IsOpen());
}

TEST_F(LoggerFile, HasWholeLinesOfSeveralThreadsInTheOrderOfTime) {
  constexpr int kLines = 300;
  Logger logger(path);
  const auto write = [&](const char* name) {
    for (int i = 0; i < kLines; ++i) {
      logger.Log("INFO", Logger::MakeMessage(ThisThread(), ' ', name, ' ', i));
    }
  };
  std::thread first(write, "first");
  std::thread second(write, "second");
  first.join();
  second.join();

  const std::vector<std::string> lines = Lines();
  ASSERT_EQ(lines.size(), 2u * kLines);
  EXPECT_TRUE(std::is_sorted(lines.begin(), lines.end(), [](const auto& a, const auto& b) {
    return a.substr(0, 23) < b.substr(0, 23);
  }));
  const auto wellFormed =
      PatternPlaces(Bytes(), R"(.{23}:(\d+):INFO:(\d+) (first|second) (\d+)(?=[\r\n]))");
  ASSERT_EQ(wellFormed.size(), lines.size());
  int next[2] = {0, 0};
  for (size_t i = 0; i < lines.size(); ++i) {
    const std::vector<std::string>& parts = wellFormed[i];
    ASSERT_EQ(parts[0], lines[i]);
    EXPECT_EQ(parts[1], parts[2]) << "the thread's own number";
    EXPECT_EQ(std::stoi(parts[4]), next[parts[3] == "first" ? 0 : 1]++) << lines[i];
  }
}

// Another thread may write its line meanwhile, and the file is in the order of time.
TEST_F(LoggerFile, HasTheTimeAtWhichTheLockWasGiven) {
  Logger logger(path);
  FakeClock clock(kAsked);
  movedByLocks = &clock;
  logger.Log("INFO", "x");
  movedByLocks = nullptr;
  EXPECT_EQ(Bytes().substr(19, 5), ".942:");
}

TEST_F(LoggerFile, ReportsALockThatCannotBeTaken) {
  Logger logger(path);
  locksFail = true;
  bool thrown = false;
  try {
    logger.Log("INFO", "lost");
  } catch (const std::system_error& error) {
    thrown = error.code().value() == EDEADLK;
  }
  locksFail = false;
  EXPECT_TRUE(thrown);
  EXPECT_EQ(Bytes(), "");
  logger.Log("INFO", "written");
  EXPECT_EQ(Lines().size(), 1u);
}

TEST(LogTimeStamp, IsTheLocalTimeWithMilliseconds) {
  for (const int64_t seconds : {951782399LL, 951782400LL, 1709640429LL, 1735689599LL}) {
    EXPECT_EQ(Logger::MakeTimeStamp(seconds * 1000), LocalClock(seconds) + ".000");
    EXPECT_EQ(Logger::MakeTimeStamp(seconds * 1000 + 7), LocalClock(seconds) + ".007");
    EXPECT_EQ(Logger::MakeTimeStamp(seconds * 1000 + 42), LocalClock(seconds) + ".042");
    EXPECT_EQ(Logger::MakeTimeStamp(seconds * 1000 + 999), LocalClock(seconds) + ".999");
  }
}

TEST(LogMessage, JoinsItsPartsWithoutSeparators) {
  EXPECT_EQ(Logger::MakeMessage(), "");
  EXPECT_EQ(Logger::MakeMessage("Close"), "Close");
  EXPECT_EQ(Logger::MakeMessage("Open:", std::string("a"), 'b', "", -5, 7u, 1LL << 40),
            "Open:ab-571099511627776");
}

TEST(LogMessage, WritesEveryPartAsAStreamWould) {
  const double numbers[] = {0.0, 1.5, -2.25, 0.1, 100.0, 1e6, 123456.789, 1e20, 1e-7};
  for (const double number : numbers) {
    std::ostringstream stream;
    stream << number << ' ' << static_cast<float>(number) << ' ' << true;
    EXPECT_EQ(Logger::MakeMessage(number, ' ', static_cast<float>(number), ' ', true),
              stream.str());
  }
}

#ifndef _WIN32

#include <cstdlib>

TEST(LogTimeStamp, FollowsTheTimeZone) {
  const char* before = std::getenv("TZ");
  const std::string kept = before == nullptr ? "" : before;
  setenv("TZ", "JST-9", 1);
  tzset();
  EXPECT_EQ(Logger::MakeTimeStamp(1709640429042), "2024-03-05T21:07:09.042");
  before == nullptr ? unsetenv("TZ") : setenv("TZ", kept.c_str(), 1);
  tzset();
}

#endif
