// SPDX-License-Identifier: MIT
// Whether a mount took a sync.
#include "console/sync_judgement.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

constexpr double kArcSecond = 1.0 / 3600.0;
constexpr SkyPosition kTarget{90.0, 20.0};

SkyPosition Off(double arcSeconds) {
  return {90.0, 20.0 + arcSeconds * kArcSecond};
}

TEST(SyncJudgement, AMountThatThenReportsTheTargetTookIt) {
  EXPECT_EQ(JudgeSync(Off(3600), kTarget, kTarget), SyncVerdict::kTaken);
  EXPECT_EQ(JudgeSync(Off(10), Off(-1), kTarget), SyncVerdict::kTaken) << "a small correction";
  EXPECT_EQ(JudgeSync(Off(3600), Off(50), kTarget), SyncVerdict::kTaken);
}

TEST(SyncJudgement, AMountThatStaysDidNotTakeIt) {
  EXPECT_EQ(JudgeSync(Off(3600), Off(3600), kTarget), SyncVerdict::kNotSeen);
  EXPECT_EQ(JudgeSync(Off(40), Off(40), kTarget), SyncVerdict::kNotSeen)
      << "within a minute of arc";
  EXPECT_EQ(JudgeSync(Off(40), Off(30), kTarget), SyncVerdict::kNotSeen) << "hardly nearer";
  EXPECT_EQ(JudgeSync(Off(2), Off(80), kTarget), SyncVerdict::kNotSeen);
}

TEST(SyncJudgement, OnTheTargetAlreadyItCannotBeTold) {
  EXPECT_EQ(JudgeSync(kTarget, kTarget, kTarget), SyncVerdict::kCannotBeTold);
  EXPECT_EQ(JudgeSync(Off(2), kTarget, kTarget), SyncVerdict::kCannotBeTold);
}

}  // namespace
}  // namespace velquinctl
