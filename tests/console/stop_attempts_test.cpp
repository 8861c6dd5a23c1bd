// SPDX-License-Identifier: MIT
// A stop that does not give up.
#include "console/stop_attempts.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "console/failure.h"

namespace velquinctl {
namespace {

void NoPause() {}

TEST(StopAttempts, EndWithTheAcknowledgement) {
  int asked = 0;
  const StopReport report =
      StopUntilAcknowledged([&] { return ++asked == 3; }, TimeLimit(1000.0), NoPause);
  EXPECT_TRUE(report.acknowledged);
  EXPECT_EQ(report.attempts, 3);
  EXPECT_EQ(asked, 3);
}

TEST(StopAttempts, GoOnWhenNoSessionCanBeHad) {
  int asked = 0;
  const auto attempt = [&] {
    if (++asked < 3) throw Failure(ExitCode::kMountFailed, "no answer from m");
    return true;
  };
  const StopReport report = StopUntilAcknowledged(attempt, TimeLimit(1000.0), NoPause);
  EXPECT_TRUE(report.acknowledged);
  EXPECT_EQ(report.lastFailure, "");
}

TEST(StopAttempts, AreMadeOnceEvenWithoutTime) {
  int asked = 0;
  const StopReport report = StopUntilAcknowledged(
      [&] {
        ++asked;
        return false;
      },
      TimeLimit(0.0), NoPause);
  EXPECT_FALSE(report.acknowledged);
  EXPECT_EQ(asked, 1);
}

TEST(StopAttempts, EndWithTheTime) {
  const auto attempt = []() -> bool { throw Failure(ExitCode::kMountFailed, "no answer from m"); };
  int pauses = 0;
  const TimeLimit limit(0.05);
  const StopReport report = StopUntilAcknowledged(attempt, limit, [&] { ++pauses; });
  EXPECT_FALSE(report.acknowledged);
  EXPECT_TRUE(limit.Over());
  EXPECT_EQ(report.lastFailure, "no answer from m");
  EXPECT_EQ(pauses, report.attempts - 1);
}

TEST(StopAttempts, PassOnWhatNoFurtherAttemptMends) {
  const auto attempt = []() -> bool { throw Failure(ExitCode::kLibraryUnusable, "no library"); };
  EXPECT_THROW(StopUntilAcknowledged(attempt, TimeLimit(1000.0), NoPause), Failure);
  const auto pressed = [] { throw Failure(ExitCode::kInterrupted, "interrupted"); };
  EXPECT_THROW(StopUntilAcknowledged([] { return false; }, TimeLimit(1000.0), pressed), Failure);
}

TEST(StopText, SaysThatTheMountMayStillBeMoving) {
  StopReport report;
  EXPECT_NE(StopText(report).find(kMayStillMove), std::string::npos);
  report.acknowledged = true;
  EXPECT_EQ(StopText(report), "the controller acknowledged the stop");
}

TEST(BrokenOffText, TellsTheCauseAndWhatCameOfTheStop) {
  StopReport acknowledged;
  acknowledged.acknowledged = true;
  EXPECT_EQ(BrokenOffText("interrupted", [&] { return acknowledged; }),
            "interrupted; the controller acknowledged the stop");
}

TEST(BrokenOffText, LosesNeitherCauseNorDangerWhenTheStopItselfFails) {
  const std::string text =
      BrokenOffText("no memory", []() -> StopReport { throw std::runtime_error("no library"); });
  EXPECT_EQ(text,
            std::string("no memory; stopping the mount failed (no library), and ") + kMayStillMove);
}

}  // namespace
}  // namespace velquinctl
