// SPDX-License-Identifier: MIT
// Numbers that make no sense: the driver sends them as they are written, for the controller to
// judge, and goes on.
#include <climits>
#include <limits>

#include "tests/library/bad_calls/box_answerer.h"
#include "tests/library/dll/driver_fixture.h"
#include "tests/library/endurance/compressed_clock.h"

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kHuge = 1e308;
constexpr SiteTime kTime = {2026, 11, 21, 21, 30, 0.0, 9.0};
constexpr SiteLocation kSite = {35.0, 135.0, 0.0};

class ExtremeNumbers : public DriverTest {
 protected:
  void SetUp() override { StartSession(); }
  void TearDown() override {
    EXPECT_TRUE(PollsAgain());
    EXPECT_EQ(driver.End(nullptr), 1);
    EXPECT_EQ(user.Answered(), 0);
  }
  /// What one request has sent, without line ends.
  std::vector<std::string> Lines() {
    std::vector<std::string> lines = Sent();
    for (std::string& line : lines) {
      EXPECT_THAT(line, EndsWith("\r\n"));
      line.resize(line.size() - 2);
    }
    controller.Clear();
    return lines;
  }
  std::vector<std::string> Goto(double ra, double dec) {
    const double radec[2] = {ra, dec};
    EXPECT_EQ(driver.Look(nullptr, radec), 1);
    return Lines();
  }
  std::vector<std::string> GuideSpeed(double rateA, double rateB) {
    EXPECT_EQ(driver.SetGuideSpeed(nullptr, rateA, rateB), 1);
    // The rates are kept once: the mark that Sent() uses must not replace them.
    EXPECT_TRUE(controller.WaitFor("$MTAGS=", kSoonMs));
    EXPECT_TRUE(PollsAgain());
    std::vector<std::string> lines = Requests();
    controller.Clear();
    return lines;
  }
  std::vector<std::string> Slew(int32_t direction, int32_t push, int32_t speed) {
    EXPECT_EQ(driver.Slew(nullptr, direction, push, speed), 1);
    return Lines();
  }
  std::vector<std::string> Pulses(int32_t ms, double rate) {
    EXPECT_EQ(driver.SlewPulseDuration(nullptr, ms, 0, ms, INT_MIN, rate, rate), 1);
    return Lines();
  }
  /// The site and the clock that are sent.
  std::vector<std::string> HandOver(const SiteTime& time, const SiteLocation& site) {
    EXPECT_EQ(driver.BaseSetting(nullptr, &time, &site), 1);
    EXPECT_TRUE(controller.WaitFor("$SYUTM?", kSoonMs));
    std::vector<std::string> lines = Lines();
    lines.resize(std::min<size_t>(lines.size(), 2));
    return lines;
  }

  const BoxAnswerer user;
  const CompressedClock clock;  // a pulse of INT_MAX milliseconds would last for 25 days
};

TEST_F(ExtremeNumbers, OfAPositionAreSentAsTheyAre) {
  EXPECT_THAT(Goto(kNan, kNan), ElementsAre("$MTTGT=3,nan,nan,"));
  EXPECT_THAT(Goto(kInfinity, -kInfinity), ElementsAre("$MTTGT=3,inf,-inf,"));
  EXPECT_THAT(Goto(-0.0, std::numeric_limits<double>::denorm_min()),
              ElementsAre("$MTTGT=3,-0.000000,0.000000,"));
  EXPECT_THAT(Goto(-720.0, 1e6), ElementsAre("$MTTGT=3,-48.000000,1000000.000000,"));
  const std::vector<std::string> huge = Goto(kHuge, -kHuge);
  ASSERT_EQ(huge.size(), 1u);
  EXPECT_THAT(huge[0], AllOf(StartsWith("$MTTGT=3,66666666666666"), EndsWith(".000000,")));
  EXPECT_EQ(huge[0].size(), 9u + 307 + 8 + 310 + 8) << huge[0];
}

TEST_F(ExtremeNumbers, OfAStoredTargetAreSentByTheNextSync) {
  const double radec[2] = {kNan, kInfinity};
  EXPECT_EQ(driver.SetPos(nullptr, radec), 1);
  EXPECT_EQ(driver.Sync(nullptr, nullptr), 1);
  EXPECT_THAT(Lines(), ElementsAre("$ALIGN=3,nan,inf,"));
}

TEST_F(ExtremeNumbers, OfGuideSpeedsAreSentAsTheyAre) {
  EXPECT_THAT(GuideSpeed(kNan, -kInfinity), ElementsAre("$MTAGS=nan,-inf\r\n"));
  const std::vector<std::string> huge = GuideSpeed(kHuge, -1.0);
  ASSERT_EQ(huge.size(), 1u);
  EXPECT_THAT(huge[0], AllOf(StartsWith("$MTAGS=1000000"), EndsWith(".000000,-1.000000\r\n")));
}

TEST_F(ExtremeNumbers, OfASpeedStepAreBroughtIntoItsRange) {
  EXPECT_THAT(Slew(TELESCOPE_NORTH, 1, INT_MAX),
              ElementsAre("$MTMV2=1.000000,0.000000,200.000000"));
  EXPECT_THAT(Slew(TELESCOPE_NORTH, INT_MIN, INT_MIN),
              ElementsAre("$MTMV2=1.000000,0.000000,0.500000"));
  EXPECT_THAT(Slew(TELESCOPE_WEST, INT_MAX, -1), ElementsAre("$MTMV2=1.000000,-0.500000,0.000000"));
}

TEST_F(ExtremeNumbers, OfADirectionMoveNothing) {
  for (const int32_t direction : {INT_MIN, -1, 0, 5, INT_MAX}) {
    EXPECT_THAT(Slew(direction, 1, 4), ElementsAre("$MTMV2=1.000000,0.000000,0.000000"));
    EXPECT_THAT(Slew(direction, 0, 4), IsEmpty());
  }
}

TEST_F(ExtremeNumbers, OfPulsesAreSentUnlessTheLengthIsNotPositive) {
  EXPECT_THAT(Pulses(INT_MIN, 1.0), IsEmpty());
  EXPECT_THAT(Pulses(-1, kNan), IsEmpty());
  EXPECT_THAT(Pulses(INT_MAX, 1.0), ElementsAre("$MTMV2=2147483.647000,0.000000,1.000000",
                                                "$MTMV2=2147483.647000,-1.000000,0.000000"));
  EXPECT_THAT(Pulses(1, kInfinity),
              ElementsAre("$MTMV2=0.001000,0.000000,inf", "$MTMV2=0.001000,-inf,0.000000"));
}

TEST_F(ExtremeNumbers, OfASiteAreSentAsTheyAreAndAZoneIsBroughtIntoARange) {
  SiteTime time = kTime;
  time.zone = kInfinity;
  EXPECT_THAT(HandOver(time, {kNan, kInfinity, kNan}),
              ElementsAre("$SYLOC=     inf,    nan,2147483647", "$SYLTM=2026,11,21,21,30,00.0"));
  time.zone = -kHuge;
  EXPECT_EQ(HandOver(time, {1e6, -1e6, 0.0}).at(0), "$SYLOC=-1000000.000,1000000.000,-2147483648");
  time.zone = kNan;
  EXPECT_EQ(HandOver(time, kSite).at(0), "$SYLOC= 135.000, 35.000,0");
}

TEST_F(ExtremeNumbers, OfAClockAreSentAsTheyAre) {
  EXPECT_EQ(HandOver({INT_MIN, INT_MIN, INT_MIN, INT_MIN, INT_MIN, kNan, 0.0}, kSite).at(1),
            "$SYLTM=-2147483648,-2147483648,-2147483648,-2147483648,-2147483648,00.0");
  EXPECT_EQ(HandOver({INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, kHuge, 0.0}, kSite).at(1),
            "$SYLTM=2147483647,2147483647,2147483647,2147483647,2147483647,00.0");
  EXPECT_EQ(HandOver({0, 0, 0, -1, 61, -0.0, 0.0}, kSite).at(1), "$SYLTM=0000,00,00,-1,61,00.0");
}

TEST_F(ExtremeNumbers, ThatNobodyLooksAtChangeNothing) {
  for (const int32_t number : {INT_MIN, -1, 2, INT_MAX}) {
    EXPECT_EQ(driver.SetEastWest(nullptr, number), 1);
    EXPECT_EQ(driver.GetEastWest(nullptr), 0);
    EXPECT_EQ(driver.Start(nullptr, controller.Address().c_str(), &driver, number), 0);
  }
  EXPECT_THAT(Lines(), IsEmpty());
}

// Status lines are the controller's numbers; the host gets what they say.
TEST_F(ExtremeNumbers, OfTheControllerAreHandedOn) {
  double radec[2] = {};
  controller.Status("1e400,2147483648,0,0,0,nan,-1e308,1e308,1e307,-1e308,99999999999");
  ASSERT_TRUE(
      Eventually([&] { return driver.GetPos(nullptr, radec) == 1 && radec[1] < -1e300; }, kSoon));
  EXPECT_EQ(driver.GetParking(nullptr), 1);
  controller.Status("60000.5,1,0,0,0,45.0,10,20,-6.0,22.5,4");
  EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 0; }, kSoon))
      << "a negative right ascension counts as none";
  EXPECT_EQ(radec[0], -90.0);
}

}  // namespace
