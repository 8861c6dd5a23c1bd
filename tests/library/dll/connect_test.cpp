// SPDX-License-Identifier: MIT
// Sessions as the wire shows them.
#include <algorithm>
#include <future>

#include "tests/library/dll/driver_fixture.h"

namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;

class Connection : public DriverTest {
 protected:
  std::vector<std::string> Datagrams() {
    std::vector<std::string> datagrams;
    for (const auto& datagram : controller.Received()) datagrams.push_back(datagram.bytes);
    return datagrams;
  }
  // Milliseconds from poll to poll, the one in the middle of all.
  double MedianPollInterval(int polls) {
    controller.Clear();
    EXPECT_TRUE(controller.WaitForCount("$MTSTA?", polls + 1, kSoonMs));
    std::vector<double> intervals;
    double last = 0.0;
    for (const auto& datagram : controller.Received()) {
      if (datagram.text != "$MTSTA?") continue;
      if (last > 0.0) intervals.push_back(datagram.timeMs - last);
      last = datagram.timeMs;
    }
    std::sort(intervals.begin(), intervals.end());
    return intervals[intervals.size() / 2];
  }
  int32_t Check() {
    return driver.Check(nullptr, controller.Address().c_str(), nullptr, version, sizeof version,
                        extra, sizeof extra);
  }

  char version[32] = "untouched";
  char extra[8] = "extra";
};

TEST_F(Connection, SendsTheseDatagramsToConnectAndThenPolls) {
  ASSERT_EQ(Start(), 1);
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 3, kSoonMs));
  std::vector<std::string> datagrams = Datagrams();
  datagrams.resize(10);
  EXPECT_THAT(datagrams, ElementsAre("$SYVER?\r\n", "$SYVER?\r\n", "$MTMDL?\r\n", "$SYVER?\r\n",
                                     "$SYLOC?\r\n", "$SYUTM?\r\n", "$MTCOM=0.000000,3.000000\r\n",
                                     "$MTSTA?\r\n", "$MTSTA?\r\n", "$MTSTA?\r\n"));
}

TEST_F(Connection, SpeaksThroughOneSocketPerSession) {
  StartSession();
  ASSERT_TRUE(PollsAgain());
  const uint16_t port = controller.Received().at(0).fromPort;
  EXPECT_EQ(controller.Received().back().fromPort, port);
  driver.End(nullptr);
  controller.Clear();
  StartSession();
  ASSERT_TRUE(PollsAgain());
  EXPECT_NE(controller.Received().at(0).fromPort, port);
}

TEST_F(Connection, PollsTenTimesASecondAndTwiceAsOftenAfterAPush) {
  StartSession();
  // The sleep plus one exchange; more only as far as a busy machine delays it.
  EXPECT_THAT(MedianPollInterval(21), AllOf(Ge(99.0), Le(130.0)));
  driver.Slew(nullptr, TELESCOPE_NORTH, 1, 0);
  driver.Slew(nullptr, TELESCOPE_NORTH, 0, 0);
  ASSERT_TRUE(controller.WaitFor("$MTMV2=", kSoonMs));
  EXPECT_THAT(MedianPollInterval(21), AllOf(Ge(49.0), Le(75.0)));
}

TEST_F(Connection, GoesToATargetAndTellsWhereTheMountIs) {
  StartSession();
  const double crab[2] = {83.633, 22.0145};
  EXPECT_EQ(driver.Look(nullptr, crab), 1);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  EXPECT_THAT(Requests(), ElementsAre("$MTTGT=3,5.575533,22.014500,\r\n"));
  controller.Status("60000.5,1,0,0,0,45.0,10,20,5.5755333333,22.0145,4");
  double radec[2] = {};
  EXPECT_TRUE(
      Eventually([&] { return driver.GetPos(nullptr, radec) == 1 && radec[1] == 22.0145; }, kSoon));
  EXPECT_NEAR(radec[0], 83.633, 1e-6);
}

TEST_F(Connection, SendsNothingAnymoreAfterItsEnd) {
  StartSession();
  EXPECT_EQ(driver.End(nullptr), 1);
  controller.Clear();
  EXPECT_FALSE(controller.WaitFor("$MTSTA?", 300));
  EXPECT_THAT(Datagrams(), IsEmpty());
  // The last position is still there.
  double radec[2] = {};
  EXPECT_EQ(driver.GetPos(nullptr, radec), 1);
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
}

TEST_F(Connection, PerformsWhatWaitsBeforeItEnds) {
  StartSession();
  driver.Home(nullptr);
  driver.AlignReset(nullptr);
  EXPECT_EQ(driver.End(nullptr), 1);
  EXPECT_THAT(Requests(), ElementsAre("$MTTGT=1,270.000000,0.000000,Home\r\n", "$ALINI=0\r\n"));
}

TEST_F(Connection, RunsTwoSessionsInARow) {
  StartSession();
  driver.End(nullptr);
  controller.Clear();
  ASSERT_EQ(Start(), 1);
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
  EXPECT_THAT(Requests(),
              ElementsAre("$SYVER?\r\n", "$SYVER?\r\n", "$MTMDL?\r\n", "$SYVER?\r\n", "$SYLOC?\r\n",
                          "$SYUTM?\r\n", "$MTCOM=0.000000,3.000000\r\n"));
}

TEST_F(Connection, EndsWhatWasNeverStarted) {
  EXPECT_EQ(driver.End(nullptr), 1);
  EXPECT_EQ(driver.End(nullptr), 1);
}

TEST_F(Connection, RefusesASecondStartWithoutASignOnTheWire) {
  StartSession();
  EXPECT_EQ(Start(), 0);
  EXPECT_EQ(driver.Start(nullptr, "127.13.1.1", nullptr, 0), 0);
  EXPECT_TRUE(PollsAgain());
  EXPECT_THAT(Requests(), IsEmpty());
  EXPECT_FALSE(FindMessageBox());
}

TEST_F(Connection, ChecksAControllerWithTheseDatagrams) {
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(extra[0], '\0');
  EXPECT_THAT(Datagrams(), ElementsAre("$SYVER?\r\n", "$SYVER?\r\n", "$MTMDL?\r\n", "$SYVER?\r\n"));
  EXPECT_FALSE(controller.WaitFor("$MTSTA?", 250)) << "a check starts no worker";
}

TEST_F(Connection, CutsTheVersionToTheHostsBuffer) {
  controller.Answers("$SYVER?", "$SYVER=1.2345678");
  char small[5] = "wxyz";
  EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, small, 4, nullptr, 0), 1);
  EXPECT_STREQ(small, "1.2");
}

TEST_F(Connection, ChecksInVainWithoutAMessage) {
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(Check(), 0);
  EXPECT_STREQ(version, "untouched");
  EXPECT_STREQ(extra, "extra");
  EXPECT_FALSE(FindMessageBox());
  EXPECT_THAT(Datagrams(), ElementsAre("$SYVER?\r\n"));
}

TEST_F(Connection, AnswersACheckWhileASessionRunsWithoutAskingTheController) {
  StartSession();
  EXPECT_EQ(driver.Check(nullptr, "127.13.1.1", nullptr, version, sizeof version, extra, 0), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_TRUE(PollsAgain());
  EXPECT_THAT(Requests(), IsEmpty());
}

// To the system an empty name is this machine's own, and on some machines that is the loopback
// address, where the controller of this test answers.
TEST_F(Connection, TakesNullForAnEmptyAddress) {
  char versionOfEmpty[sizeof version] = "untouched";
  const int empty =
      driver.Check(nullptr, "", nullptr, versionOfEmpty, sizeof versionOfEmpty, extra, 0);
  EXPECT_EQ(driver.Check(nullptr, nullptr, nullptr, version, sizeof version, extra, 0), empty);
  EXPECT_STREQ(version, versionOfEmpty);
}

// While a poll waits for its answer the number of failed ones stands still: the eleventh waits for
// nothing, the one after it for a late answer.
TEST_F(Connection, LosesThePositionWithElevenPollsAndFindsItWithOne) {
  constexpr int kGoodPolls = 2;
  const simulator::ScriptedReply wrong = "$SYVER=1.00";
  std::vector<simulator::ScriptedReply> replies(kGoodPolls,
                                                "$MTSTA=60000.5,1,0,0,0,45.0,10,20,6.0,22.5,4");
  replies.insert(replies.end(), 10, wrong);
  replies.push_back(simulator::Silence());
  replies.push_back(simulator::Late("$MTSTA=60000.5,1,0,0,0,45.0,10,20,7.0,22.5,4", 400));
  replies.push_back(wrong);
  controller.AnswersInTurn("$MTSTA?", replies);
  ASSERT_EQ(Start(), 1);

  double radec[2] = {};
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", kGoodPolls + 11, kSoonMs));
  EXPECT_EQ(driver.GetPos(nullptr, radec), 1) << "ten polls have failed";
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(controller.CountOf("$MTSTA?"), kGoodPolls + 11) << "that was too late";

  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", kGoodPolls + 12, kSoonMs));
  EXPECT_EQ(driver.GetPos(nullptr, radec), 0) << "eleven polls have failed";
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(controller.CountOf("$MTSTA?"), kGoodPolls + 12) << "that was too late";

  EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon));
  EXPECT_THAT(radec, ElementsAre(105.0, 22.5));
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", kGoodPolls + 15, kSoonMs));
  EXPECT_EQ(driver.GetPos(nullptr, radec), 1) << "the failed ones are counted anew";
}

TEST_F(Connection, KnowsThatTheControllerIsGone) {
  StartSession();
  double radec[2] = {};
  controller.AnswersEmpty("$MTSTA?");
  EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 0; }, kSoon));
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(driver.End(nullptr), 1);
  controller.LooksLikeAMount();
  ASSERT_EQ(Start(), 1);
  EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon));
}

}  // namespace
