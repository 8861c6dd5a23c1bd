// SPDX-License-Identifier: MIT
// The list of failures, the one thing that grows with time: so much a record, and no more.
#include "tests/library/endurance/compressed_clock.h"
#include "tests/library/endurance/soak_fixture.h"
#include "tests/support/eventually.h"

namespace {

using testing::EndsWith;

using Journal = Soak;

TEST_F(Journal, HoldsSoManyBytesARecord) {
  const int64_t records = Times(360'000, 5'000);
  const CompressedClock clock;
  ASSERT_NO_FATAL_FAILURE(Start());
  driver.End(nullptr);
  ASSERT_TRUE(JournalLines().empty());
  const int64_t before = LibraryMemory::Bytes();

  ASSERT_NO_FATAL_FAILURE(Start());
  controller.FailPolls(SteadyController::Failure::kWrongKey, 1);
  ASSERT_TRUE(Eventually([&] { return controller.FailedPolls() >= records; },
                         std::chrono::minutes(IsFullLength() ? 30 : 1)));
  controller.FailPolls(SteadyController::Failure::kWrongKey, 0);
  const int64_t polls = controller.Polls();
  ASSERT_TRUE(Eventually([&] { return controller.Polls() > polls + 2; }, kSoon));
  const auto begin = std::chrono::steady_clock::now();
  driver.End(nullptr);
  const std::chrono::duration<double> ending = std::chrono::steady_clock::now() - begin;

  const std::vector<std::string> lines = JournalLines();
  ASSERT_GE(lines.size(), static_cast<size_t>(records));
  EXPECT_THAT(lines[100], EndsWith(" $MTSTA? : Return Value Mismatch"));
  const int64_t held = LibraryMemory::Bytes() - before;
  ExpectGrownByTheJournal(before);
  std::printf("%zu records: %lld bytes, %.1f each; the end took %.2f s\n", lines.size(),
              static_cast<long long>(held), static_cast<double>(held) / lines.size(),
              ending.count());
}

}  // namespace
