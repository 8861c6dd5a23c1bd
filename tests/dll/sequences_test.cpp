// SPDX-License-Identifier: MIT
// Whole conversations of the built library, byte for byte.
#include <algorithm>

#include "tests/dll/driver_fixture.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Sequences : public DriverTest {
 protected:
  std::vector<std::string> Bytes() {
    std::vector<std::string> bytes;
    for (const auto& datagram : controller.Received()) bytes.push_back(datagram.bytes);
    return bytes;
  }
};

TEST_F(Sequences, ConnectsWithSevenExchangesAndThenPolls) {
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 3, kSoonMs));
  std::vector<std::string> bytes = Bytes();
  ASSERT_GE(bytes.size(), 10u);
  EXPECT_THAT(std::vector<std::string>(bytes.begin(), bytes.begin() + 7),
              ElementsAre("$SYVER?\r\n", "$SYVER?\r\n", "$MTMDL?\r\n", "$SYVER?\r\n", "$SYLOC?\r\n",
                          "$SYUTM?\r\n", "$MTCOM=0.000000,3.000000\r\n"));
  EXPECT_THAT(std::vector<std::string>(bytes.begin() + 7, bytes.end()), Each("$MTSTA?\r\n"));
}

TEST_F(Sequences, PollsEvery100MsPlusTheExchange) {
  StartSession();
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 21, kSoonMs));
  std::vector<double> intervals;
  const auto received = controller.Received();
  for (size_t i = 1; i < received.size(); ++i) {
    intervals.push_back(received[i].timeMs - received[i - 1].timeMs);
  }
  std::sort(intervals.begin(), intervals.end());
  EXPECT_GE(intervals.front(), 95.0);
  const double median = intervals[intervals.size() / 2];
  EXPECT_GE(median, 100.0);
  EXPECT_LT(median, 125.0);
}

TEST_F(Sequences, ProbesWithFourExchangesAndNothingElse) {
  char version[16] = "untouched";
  char extra[4] = "abc";
  EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, version, sizeof version,
                         extra, sizeof extra),
            1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(std::string(extra, 3), std::string("\0bc", 3));
  EXPECT_THAT(controller.Commands(), ElementsAre("$SYVER?", "$SYVER?", "$MTMDL?", "$SYVER?"));
}

TEST_F(Sequences, CutsTheVersionToTheHostsBuffer) {
  controller.Answers("$SYVER?", "$SYVER=1.2345678");
  char version[4] = "xyz";
  EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, version, sizeof version,
                         nullptr, 0),
            1);
  EXPECT_STREQ(version, "1.2");
}

TEST_F(Sequences, AProbeOfASilentControllerChangesNothing) {
  controller.IsSilentTo("$SYVER?");
  char version[16] = "untouched";
  EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, version, sizeof version,
                         nullptr, 0),
            0);
  EXPECT_STREQ(version, "untouched");
}

TEST_F(Sequences, AProbeDuringASessionSendsNothing) {
  StartSession();
  char version[16] = "";
  EXPECT_EQ(driver.Check(nullptr, "127.0.0.77", nullptr, version, sizeof version, nullptr, 0), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(Sequences, ASecondStartLeavesTheSessionAlone) {
  StartSession();
  EXPECT_EQ(driver.Start(nullptr, "127.0.0.77", nullptr, 0), 0);
  EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(Sequences, AGotoTravelsInHoursAndDegrees) {
  StartSession();
  const double target[2] = {83.633, 22.0145};
  EXPECT_EQ(driver.Look(nullptr, target), 1);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  EXPECT_THAT(Requests(), ElementsAre("$MTTGT=3,5.575533,22.014500,"));
}

TEST_F(Sequences, EndStopsThePollsAndTheNextSessionStartsAnew) {
  StartSession();
  EXPECT_EQ(driver.End(nullptr), 1);
  controller.Clear();
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
  EXPECT_EQ(controller.Commands().front(), "$SYVER?");
}

TEST_F(Sequences, TheLastPositionOutlivesTheSession) {
  controller.Status("60310.5,1,0,0,0,45.0,10.0,20.0,6.0,22.5,4");
  StartSession();
  driver.End(nullptr);
  double radec[2] = {};
  EXPECT_EQ(driver.GetPos(nullptr, radec), 1);
  EXPECT_EQ(radec[0], 90.0);
  EXPECT_EQ(radec[1], 22.5);
}

TEST_F(Sequences, AWrongAddressDoesNotSpoilTheNextOne) {
  controller.IsSilentTo("$SYVER?");
  char version[16] = "";
  driver.Check(nullptr, controller.Address().c_str(), nullptr, version, sizeof version, nullptr, 0);
  controller.LooksLikeAMount();
  EXPECT_EQ(driver.Check(nullptr, "localhost", nullptr, version, sizeof version, nullptr, 0), 1);
  ASSERT_FALSE(controller.Received().empty());
  EXPECT_NE(controller.Received().front().fromPort, controller.Received().back().fromPort);
}

}  // namespace
