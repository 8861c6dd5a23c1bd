// SPDX-License-Identifier: MIT
// The worker's cycle: what is taken out of the queue when, and what a poll leaves behind.
#include <thread>

#include "res/string_ids.h"
#include "tests/library/engine/engine_fixture.h"
#include "tests/support/after.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::IsEmpty;

const char* const kHome = "$MTTGT=1,270.000000,0.000000,Home";
const char* const kAlignReset = "$ALINI=0";

class Queue : public EngineTest {
 protected:
  // What came after the connecting, up to and with the first poll.
  std::vector<std::string> FirstCycle() {
    EXPECT_EQ(Connect(), 1);
    EXPECT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
    return UpTo(After(controller.Commands(), "$MTCOM=0.000000,3.000000"), "$MTSTA?");
  }
};

TEST_F(Queue, PerformsWhatWasQueuedBeforeTheStartInOrderInTheFirstCycle) {
  telescope.Home();
  telescope.SetGuideSpeed(0.5, 0.25);
  telescope.AlignReset();
  EXPECT_THAT(probe.Queue(), ElementsAre(9, 5, 12));
  EXPECT_THAT(FirstCycle(), ElementsAre(kHome, "$MTAGS=0.500000,0.250000", kAlignReset, "$MTSTA?"));
}

TEST_F(Queue, PerformsACodeThatWasTheLastOne) {
  telescope.AlignReset();
  EXPECT_THAT(FirstCycle(), ElementsAre(kAlignReset, "$MTSTA?"));
  EXPECT_THAT(probe.Queue(), IsEmpty());
}

TEST_F(Queue, DropsCodesItDoesNotKnow) {
  for (const int code : {8, 10, 15, -1, 1000}) probe.Enqueue(code);
  telescope.AlignReset();
  EXPECT_THAT(FirstCycle(), ElementsAre(kAlignReset, "$MTSTA?"));
  EXPECT_TRUE(Idle());
}

TEST_F(Queue, LeavesTheLoopAtTheCloseAndKeepsWhatIsBehindItForTheNextSession) {
  probe.Enqueue(kCommandClose);
  telescope.AlignReset();
  ASSERT_EQ(Connect(), 1);
  telescope.End();
  EXPECT_FALSE(controller.Saw(kAlignReset));
  EXPECT_FALSE(controller.Saw("$MTSTA?")) << "a poll after the close";
  // The end has queued a close of its own, which the next session meets first.
  EXPECT_THAT(probe.Queue(), ElementsAre(kCommandAlignReset, kCommandClose));
}

TEST_F(Queue, IsBusyWhileACodeIsPerformed) {
  app.Hold();
  StartSession();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  EXPECT_EQ(telescope.GetBusy(), 1);
  app.Answer();
  EXPECT_TRUE(Eventually([&] { return telescope.GetBusy() == 0; }, kSoon));
}

TEST_F(Queue, TakesRequestsWhileOneIsPerformed) {
  app.Hold();
  StartSession();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  // No lock is held while the user thinks.
  double radec[2];
  EXPECT_EQ(telescope.GetPos(radec), 1);
  telescope.Home();
  telescope.AlignReset();
  EXPECT_THAT(probe.Queue(), ElementsAre(9, 12));
  app.Answer();
  ASSERT_TRUE(Idle());
  EXPECT_THAT(Requests(), ElementsAre(kHome, kAlignReset));
}

TEST_F(Queue, PollsBeforeARequestThatCameDuringTheLastOne) {
  app.Hold();
  StartSession();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  controller.Clear();
  telescope.AlignReset();
  app.Answer();
  ASSERT_TRUE(controller.WaitFor(kAlignReset, kSoonMs));
  EXPECT_EQ(controller.Commands()[0], "$MTSTA?");
}

TEST_F(Queue, GoesOnAfterARequestThatTheControllerDoesNotAnswer) {
  controller.IsSilentTo("$ALIGN=");
  StartSession();
  const double radec[2] = {15.0, 1.0};
  telescope.Sync(radec);
  telescope.Home();
  ASSERT_TRUE(Idle());
  EXPECT_THAT(Requests(), ElementsAre("$ALIGN=3,1.000000,1.000000,", kHome));
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(Queue, LosesARequestForWhichThereIsNoMemoryAndGoesOn) {
  app.HasMemory(false);
  StartSession();
  telescope.Look(nullptr);
  telescope.AlignReset();
  ASSERT_TRUE(Idle());
  EXPECT_THAT(app.Boxes(), testing::SizeIs(1));
  EXPECT_THAT(Requests(), ElementsAre(kAlignReset));
  EXPECT_TRUE(PollsAgain());
}

// --- Poll --------------------------------------------------------------------------------------

TEST_F(Queue, PollsTenTimesASecond) {
  rhythm.SetPeriod(CThreadCtrl().Period());
  StartSession();
  const auto begin = std::chrono::steady_clock::now();
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 11, kSoonMs));
  const auto tenCycles = std::chrono::steady_clock::now() - begin;
  EXPECT_GE(tenCycles, 900ms);
  EXPECT_LT(tenCycles, 2000ms);
}

TEST_F(Queue, PublishesWhatAPollTells) {
  controller.Status("60000.5,2,0,0,0,45.0,10,20,6.0,22.5,4");
  StartSession();
  double radec[2] = {};
  EXPECT_EQ(telescope.GetPos(radec), 1);
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(telescope.GetSlewing(), 1);
  EXPECT_EQ(telescope.GetParking(), 1);
}

TEST_F(Queue, TakesStateTwoForSlewingAndNoOther) {
  StartSession();
  for (const char* state : {"2", "0", "2", "1", "2", "3", "2", "4", "2", "-2", "2", "22"}) {
    controller.Status(std::string("60000.5,") + state + ",0,0,0,45.0,10,20,6.0,22.5,4");
    ASSERT_TRUE(PollsAgain());
    EXPECT_EQ(telescope.GetSlewing(), std::string(state) == "2" ? 1 : 0) << state;
  }
}

TEST_F(Queue, TakesParkedAndModesThatDoNotObserveForNotReady) {
  StartSession();
  controller.Status("60000.5,3,0,0,0,45.0,10,20,6.0,22.5,4");
  ASSERT_TRUE(PollsAgain());
  EXPECT_EQ(telescope.GetParking(), 0);
  controller.Status("60000.5,1,0,0,0,45.0,10,20,6.0,22.5,12");
  ASSERT_TRUE(PollsAgain());
  EXPECT_EQ(telescope.GetParking(), 1);
  controller.Status("60000.5,1,0,0,0,45.0,10,20,6.0,22.5,11");
  ASSERT_TRUE(PollsAgain());
  EXPECT_EQ(telescope.GetParking(), 0);
}

TEST_F(Queue, LosesThePositionAfterElevenFailedPollsAndFindsItWithOneGoodOne) {
  StartSession();
  telescope.End();  // polls without a link fail at once
  double radec[2] = {};
  for (int failed = 1; failed <= 10; ++failed) {
    EXPECT_EQ(telescope.OnPoll(), 1);
    EXPECT_EQ(telescope.GetPos(radec), 1) << failed;
  }
  EXPECT_EQ(telescope.OnPoll(), 1);
  radec[0] = radec[1] = 0.0;
  EXPECT_EQ(telescope.GetPos(radec), 0);
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5)) << "the last good position is handed out anyway";

  ASSERT_EQ(Connect(), 1);
  EXPECT_TRUE(Eventually([&] { return telescope.GetPos(radec) == 1; }, kSoon));
  EXPECT_EQ(probe.FailedPolls(), 0);
}

TEST_F(Queue, NeverLeavesTheLoopForADeadLink) {
  StartSession();
  controller.AnswersEmpty("$MTSTA?");  // closes the link
  EXPECT_TRUE(Eventually([&] { return probe.FailedPolls() > 15; }, kSoon));
  double radec[2];
  EXPECT_EQ(telescope.GetPos(radec), 0);
  telescope.AlignReset();
  EXPECT_TRUE(Idle());
  EXPECT_EQ(telescope.GetConnected(), 1);
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(Queue, KeepsWhatTheLastGoodPollToldThroughFailedOnes) {
  controller.Status("60000.5,2,0,0,0,45.0,10,20,6.0,22.5,4");
  StartSession();
  controller.Answers("$MTSTA?", "$WRONG=1");
  ASSERT_TRUE(PollsAgain());
  double radec[2] = {};
  telescope.GetPos(radec);
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(telescope.GetSlewing(), 1);
  EXPECT_EQ(telescope.GetParking(), 1);
}

}  // namespace
