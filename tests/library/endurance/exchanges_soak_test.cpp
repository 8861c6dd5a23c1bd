// SPDX-License-Identifier: MIT
// One link that is never closed: commands of all kinds and polls, as fast as the network carries
// them.
#include "framework/base/critical_section.h"
#include "tests/library/endurance/compressed_clock.h"
#include "tests/library/endurance/soak_fixture.h"
#include "tests/support/eventually.h"

namespace {

class Exchanges : public Soak {
 protected:
  /// One of each kind that ends by itself.
  void AskForEverything() {
    // High above every horizon of the simulated site.
    const double nearThePole[2] = {37.95, 85.0};
    const CSingleLock guard(notWhileSampled);
    driver.Look(nullptr, nearThePole);
    driver.Sync(nullptr, nearThePole);
    driver.SetGuideSpeed(nullptr, 0.5, 0.5);
    driver.Slew(nullptr, TELESCOPE_NORTH, 1, 3);
    driver.SlewPulseDuration(nullptr, 20, 0, 20, 0, 1.0, 1.0);
    driver.BaseSetting(nullptr, &time_, &site_);
    driver.Home(nullptr);
    driver.UnPark(nullptr);
  }

  CCriticalSection notWhileSampled;

 private:
  const SiteTime time_ = {2026, 11, 21, 21, 30, 30.0, 9.0};
  const SiteLocation site_ = {35.0, 135.0, 0.0};
};

TEST_F(Exchanges, OnOneLinkLeaveNothingBehind) {
  const int64_t exchanges = Times(1'000'000, 8'000);
  const int64_t every = exchanges / 50;
  int64_t nextSample = 2 * every;  // what is made once has been made by then
  const CompressedClock clock([&](uint32_t ms) {
    // Between two cycles; the pause after a pulse is another one.
    const bool rests = ms == 100 || ms == 50;
    if (!rests || controller.Exchanges() < nextSample) return;
    const CSingleLock guard(notWhileSampled);
    Sample(static_cast<double>(controller.Exchanges()) / 1000.0);
    nextSample += every;
  });
  ASSERT_NO_FATAL_FAILURE(Start());
  while (controller.Exchanges() < exchanges + 2 * every) {
    const int64_t polls = controller.Polls();
    AskForEverything();
    ASSERT_TRUE(Eventually([&] { return controller.Polls() > polls + 20; }, kSoon));
  }
  EXPECT_EQ(controller.ChangesOfPort(), 0);
  driver.End(nullptr);
  Report(std::to_string(exchanges) + " exchanges on one link", "1000 exchanges");
  ExpectFlatProcess();
  ExpectFlatLibrary();
}

}  // namespace
