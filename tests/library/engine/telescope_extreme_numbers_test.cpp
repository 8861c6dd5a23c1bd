// SPDX-License-Identifier: MIT
// Numbers that make no sense, in every argument that takes one. Nothing is expected of the wire
// here: the sanitizers look on (preset native-asan), and the session goes on.
#include <climits>
#include <limits>

#include "tests/library/engine/engine_fixture.h"

namespace {

using Limits = std::numeric_limits<double>;

const std::vector<double> kNumbers = {Limits::quiet_NaN(),
                                      Limits::infinity(),
                                      -Limits::infinity(),
                                      1e308,
                                      -1e308,
                                      Limits::denorm_min(),
                                      -0.0,
                                      2147483648.0,
                                      -2147483649.0};
const std::vector<int32_t> kWholeNumbers = {INT_MIN, INT_MIN + 1, -1, 0, 13, INT_MAX - 1, INT_MAX};

class ExtremeNumbers : public EngineTest {
 protected:
  void SetUp() override { StartSession(); }
  void TearDown() override {
    EXPECT_TRUE(Idle());
    EXPECT_TRUE(PollsAgain());
    EXPECT_EQ(telescope.End(), 1);
    EXPECT_TRUE(app.Boxes().empty());
  }
  /// Hands a site and a clock over and waits until the controller has got them.
  void HandOver(const SiteTime& time, const SiteLocation& site) {
    controller.Clear();
    telescope.BaseSetting(&time, &site);
    ASSERT_TRUE(controller.WaitFor("$SYUTM?", kSoonMs));
  }
};

TEST_F(ExtremeNumbers, OfAPositionAreSent) {
  for (const double number : kNumbers) {
    const double radec[2] = {number, number};
    telescope.Look(radec);
    telescope.Sync(radec);
    telescope.SetPos(radec);
    EXPECT_TRUE(Idle());
  }
}

TEST_F(ExtremeNumbers, OfASiteAndItsClockAreSent) {
  for (const double number : kNumbers) {
    const SiteLocation site = {number, number, number};
    HandOver({2026, 11, 21, 21, 30, number, number}, site);
    HandOver({2026, 11, 21, 21, 30, 59.99, number}, site);
  }
}

// Seconds that round to 60 are carried into the date, whatever it is.
TEST_F(ExtremeNumbers, OfADateAreCarried) {
  for (const int32_t number : kWholeNumbers) {
    const SiteLocation site = {35.0, 135.0, 0.0};
    for (const double second : {0.0, 59.99}) {
      HandOver({number, number, number, number, number, second, 0.0}, site);
      HandOver({number, 11, 21, 23, 59, second, 0.0}, site);
      HandOver({2026, number, 21, 23, 59, second, 0.0}, site);
      HandOver({2026, 11, number, 23, 59, second, 0.0}, site);
      HandOver({2026, 11, 21, number, 59, second, 0.0}, site);
      HandOver({2026, 11, 21, 23, number, second, 0.0}, site);
    }
  }
}

TEST_F(ExtremeNumbers, OfAMoveAreSent) {
  for (const int32_t number : kWholeNumbers) {
    telescope.Slew(number, number, number);
    telescope.Slew(TELESCOPE_NORTH, number, number);
    telescope.SetEastWest(number);
    EXPECT_TRUE(Idle());
  }
  for (const double number : kNumbers) {
    telescope.SetGuideSpeed(number, number);
    telescope.SlewPulseDuration(1, INT_MIN, 1, -1, number, number);
    EXPECT_TRUE(Idle());
  }
}

}  // namespace
