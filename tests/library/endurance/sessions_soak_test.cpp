// SPDX-License-Identifier: MIT
// One session after the other: start, poll, end.
#include <memory>

#include "tests/library/endurance/compressed_clock.h"
#include "tests/library/endurance/soak_fixture.h"

namespace {

using Sessions = Soak;

TEST_F(Sessions, LeaveNothingBehind) {
  const int64_t sessions = Times(10'000, 300);
  const int64_t every = sessions / 50;
  // The full run sleeps as a user's driver does.
  std::unique_ptr<CompressedClock> clock;
  if (!IsFullLength()) clock = std::make_unique<CompressedClock>();
  for (int64_t i = 1 - every; i <= sessions; ++i) {
    ASSERT_NO_FATAL_FAILURE(Start()) << "session " << i;
    ASSERT_EQ(driver.End(nullptr), 1);
    if (i >= 0 && i % every == 0) Sample(static_cast<double>(i) / 1000.0);
  }
  Report(std::to_string(sessions) + " sessions", "1000 sessions");
  ExpectFlatProcess();
  ExpectFlatLibrary();
}

}  // namespace
