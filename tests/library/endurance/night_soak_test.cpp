// SPDX-License-Identifier: MIT
// A night of ten hours at ten polls a second, over in minutes: the library's sleeps are left out
// and its clock goes on as if it had slept. The Wi-Fi loses a reply now and then.
#include "framework/base/critical_section.h"
#include "tests/library/endurance/compressed_clock.h"
#include "tests/library/endurance/soak_fixture.h"
#include "tests/support/eventually.h"

namespace {

constexpr double kPollsAnHour = 35'000.0;

class Night : public Soak {
 protected:
  /// What a guiding host asks for every minute of the night.
  void GuideForAMoment() {
    const CSingleLock guard(notWhileSampled);
    double radec[2];
    driver.GetPos(nullptr, radec);
    driver.GetParking(nullptr);
    driver.GetEastWest(nullptr);
    driver.SlewPulseDuration(nullptr, 20, 0, 20, 0, 1.0, 1.0);
  }

  CCriticalSection notWhileSampled;
};

TEST_F(Night, OfTenHoursHoldsNothingButItsJournal) {
  const int64_t polls = Times(360'000, 5'000);
  const int64_t every = polls / 50;
  const int64_t pollsAMinute = 600;
  int64_t nextSample = every;
  const CompressedClock clock([&](uint32_t ms) {
    if (ms != 100 || controller.Polls() < nextSample) return;
    const CSingleLock guard(notWhileSampled);
    Sample(static_cast<double>(controller.Polls()) / kPollsAnHour);
    nextSample += every;
  });
  const double beginSeconds = CompressedClock::Seconds();
  ASSERT_NO_FATAL_FAILURE(Start());
  driver.End(nullptr);
  const int64_t atRest = LibraryMemory::Bytes();

  controller.FailPolls(SteadyController::Failure::kSilence, Times(3'000, 2'000));
  ASSERT_NO_FATAL_FAILURE(Start());
  while (controller.Polls() < polls + every) {
    const int64_t from = controller.Polls();
    GuideForAMoment();
    ASSERT_TRUE(Eventually([&] { return controller.Polls() >= from + pollsAMinute; }, kSoon));
  }
  driver.End(nullptr);
  const double hours = (CompressedClock::Seconds() - beginSeconds) / 3600.0;
  Report("a night of " + std::to_string(hours) + " hours with " +
             std::to_string(controller.FailedPolls()) + " lost replies",
         "hour");
  EXPECT_GE(hours, static_cast<double>(polls) / kPollsAnHour);
  ExpectFlatProcess();
  ExpectFlatLibrary();
  // A reply that is lost is in the journal, and the journal is all that the night has left behind.
  const std::vector<std::string> lines = JournalLines();
  EXPECT_GE(lines.size(), static_cast<size_t>(controller.FailedPolls()));
  EXPECT_GT(controller.FailedPolls(), 0);
  ExpectGrownByTheJournal(atRest);
}

}  // namespace
