// SPDX-License-Identifier: MIT
// Everything that moves the mount, from the host's call to the line on the wire.
#include <climits>

#include "res/string_ids.h"
#include "tests/core/protocol/vq_ctrl_probe.h"
#include "tests/library/engine/debug_output_capture.h"
#include "tests/library/engine/engine_fixture.h"
#include "tests/support/after.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kCrab[2] = {83.633, 22.0145};
const char* const kGotoCrab = "$MTTGT=3,5.575533,22.014500,";
const char* const kHome = "$MTTGT=1,270.000000,0.000000,Home";
const char* const kNoMove = "$MTMV2=1.000000,0.000000,0.000000";

enum Direction { kNorth = 1, kSouth, kEast, kWest };

class Motion : public EngineTest {
 protected:
  // All that the requests queued so far send.
  std::vector<std::string> Sent() {
    EXPECT_TRUE(Idle());
    return Requests();
  }
  // The same for requests that are queued before the session, so that the worker finds them all.
  std::vector<std::string> SentByANewSession() {
    EXPECT_EQ(Connect(), 1);
    EXPECT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
    return After(Sent(), "$MTCOM=0.000000,3.000000");
  }
};

// --- Goto --------------------------------------------------------------------------------------

TEST_F(Motion, GoesToATarget) {
  StartSession();
  EXPECT_EQ(telescope.Look(kCrab), 1);
  EXPECT_THAT(Sent(), ElementsAre(kGotoCrab));
  EXPECT_EQ(telescope.GetTargetValid(), 1);
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(Motion, GoesToTheEarlierTargetAgain) {
  StartSession();
  telescope.Look(kCrab);
  ASSERT_TRUE(Idle());
  EXPECT_EQ(telescope.Look(nullptr), 1);
  EXPECT_THAT(Sent(), ElementsAre(kGotoCrab, kGotoCrab));
}

TEST_F(Motion, GoesToATargetThatWasOnlyStored) {
  StartSession();
  EXPECT_EQ(telescope.GetTargetValid(), 0);
  EXPECT_EQ(telescope.SetPos(kCrab), 1);
  EXPECT_EQ(telescope.GetTargetValid(), 1);
  EXPECT_THAT(Sent(), IsEmpty());
  telescope.Look(nullptr);
  EXPECT_THAT(Sent(), ElementsAre(kGotoCrab));
}

TEST_F(Motion, GoesToTheTargetOfTheMomentOfSending) {
  telescope.Look(kCrab);
  const double later[2] = {15.0, -5.25};
  telescope.SetPos(later);
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTTGT=3,1.000000,-5.250000,"));
}

TEST_F(Motion, TellsTheUserThatThereIsNoTarget) {
  StartSession();
  EXPECT_EQ(telescope.Look(nullptr), 1);
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_THAT(BoxTexts(), ElementsAre(TableText(kTextCommandRefused)));
  EXPECT_NE(app.Boxes()[0].thread, std::this_thread::get_id());
}

TEST_F(Motion, SaysNothingWhenTheControllerRefusesATarget) {
  controller.Answers("$MTTGT=", "$ERROR=1");
  StartSession();
  telescope.Look(kCrab);
  EXPECT_THAT(Sent(), ElementsAre(kGotoCrab));
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(Motion, TellsTheUserThatATargetIsBelowTheHorizonAndWaits) {
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  app.Hold();
  StartSession();
  telescope.Look(kCrab);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  EXPECT_THAT(BoxTexts(), ElementsAre(TableText(kTextBelowHorizon)));
  controller.Clear();
  std::this_thread::sleep_for(std::chrono::milliseconds(250));
  EXPECT_FALSE(controller.Saw("$MTSTA?")) << "the worker waits for the user";
  app.Answer();
  EXPECT_TRUE(PollsAgain());
}

// --- Sync --------------------------------------------------------------------------------------

TEST_F(Motion, SynchronisesOnATarget) {
  StartSession();
  EXPECT_EQ(telescope.Sync(kCrab), 1);
  EXPECT_EQ(telescope.GetTargetValid(), 1);
  telescope.Sync(nullptr);
  EXPECT_THAT(Sent(), ElementsAre("$ALIGN=3,5.575533,22.014500,", "$ALIGN=3,5.575533,22.014500,"));
}

TEST_F(Motion, DoesNothingForASyncWithoutATarget) {
  StartSession();
  EXPECT_EQ(telescope.Sync(nullptr), 1);
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

// --- Stop, home, park --------------------------------------------------------------------------

TEST_F(Motion, StopsThenEndsEveryHandMove) {
  StartSession();
  EXPECT_EQ(telescope.Stop(), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTSTP=1", kNoMove));
}

TEST_F(Motion, EndsEveryHandMoveAlsoWhenTheStopWasNotAnswered) {
  controller.IsSilentTo("$MTSTP=1");
  StartSession();
  telescope.Stop();
  EXPECT_THAT(Sent(), ElementsAre("$MTSTP=1", kNoMove));
}

TEST_F(Motion, OvertakesAllThatWaitsWithAStop) {
  telescope.Look(kCrab);
  telescope.Sync(nullptr);
  telescope.Home();
  telescope.Slew(kNorth, 1, 5);
  telescope.Park();
  EXPECT_THAT(probe.Queue(), ElementsAre(2, 3, 9, 4, 13));
  telescope.Stop();
  EXPECT_THAT(probe.Queue(), ElementsAre(7));
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTSTP=1", kNoMove));
}

TEST_F(Motion, KeepsACloseThatWaitsBehindTheStop) {
  telescope.Home();
  probe.Enqueue(kCommandClose);
  telescope.Home();
  telescope.Stop();
  EXPECT_THAT(probe.Queue(), ElementsAre(kCommandStop, kCommandClose));
}

TEST_F(Motion, EndsASessionThoughAStopComesBetween) {
  app.Hold();
  StartSession();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  std::thread end([&] { telescope.End(); });
  EXPECT_TRUE(Eventually([&] { return telescope.GetConnected() == 0; }, kSoon));
  telescope.Stop();
  app.Answer();
  end.join();
  EXPECT_FALSE(rhythm.HasThread());
  EXPECT_THAT(Requests(), ElementsAre("$MTSTP=1", kNoMove));
}

TEST_F(Motion, GoesHome) {
  StartSession();
  EXPECT_EQ(telescope.Home(), 1);
  EXPECT_THAT(Sent(), ElementsAre(kHome));
}

TEST_F(Motion, ParksWhereTheLastStatusSaid) {
  controller.Status("60000.5,1,0,0,0,45.0,12.5,-33.25,6.0,22.5,4");
  StartSession();
  EXPECT_EQ(telescope.Park(), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=2,12.500000,-33.250000,Park"));
}

TEST_F(Motion, UnparksToWhereTheMountPoints) {
  StartSession();
  EXPECT_EQ(telescope.UnPark(), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=3,6.000000,22.500000,Star"));
}

// --- Hand move ---------------------------------------------------------------------------------

TEST_F(Motion, MovesByHandInEachDirection) {
  StartSession();
  for (const int direction : {kNorth, kSouth, kEast, kWest}) {
    EXPECT_EQ(telescope.Slew(direction, 1, direction), 1);
    ASSERT_TRUE(Idle());
  }
  EXPECT_THAT(Sent(), ElementsAre("$MTMV2=1.000000,0.000000,25.500000",   //
                                  "$MTMV2=1.000000,0.000000,-50.500000",  //
                                  "$MTMV2=1.000000,75.500000,0.000000",   //
                                  "$MTMV2=1.000000,-100.500000,0.000000"));
}

TEST_F(Motion, PassesTheSpeedStepOnAsItIs) {
  StartSession();
  for (const int step : {-2, 0, 9, 1000}) {
    telescope.Slew(kNorth, 1, step);
    ASSERT_TRUE(Idle());
  }
  EXPECT_THAT(Sent(), ElementsAre("$MTMV2=1.000000,0.000000,0.500000",    //
                                  "$MTMV2=1.000000,0.000000,0.500000",    //
                                  "$MTMV2=1.000000,0.000000,200.000000",  //
                                  "$MTMV2=1.000000,0.000000,200.000000"));
}

TEST_F(Motion, KeepsOneMoveHoweverOftenAButtonIsReported) {
  for (int i = 0; i < 10; ++i) telescope.Slew(kNorth, 1, 1);
  EXPECT_THAT(probe.Queue(), ElementsAre(4));
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTMV2=1.000000,0.000000,25.500000"));
}

TEST_F(Motion, KeepsOneMoveWhileTheWorkerIsBusy) {
  app.Hold();
  StartSession();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  for (int i = 0; i < 10; ++i) telescope.Slew(kSouth, 1, 1);
  EXPECT_THAT(probe.Queue(), ElementsAre(4));
  app.Answer();
  EXPECT_THAT(Sent(), ElementsAre("$MTMV2=1.000000,0.000000,-25.500000"));
}

TEST_F(Motion, LooksOnlyAtTheLastRequestForAMoveThatWaits) {
  telescope.Slew(kNorth, 1, 1);
  telescope.Home();
  telescope.Slew(kNorth, 1, 1);
  telescope.Slew(kNorth, 1, 1);
  EXPECT_THAT(probe.Queue(), ElementsAre(4, 9, 4));
}

TEST_F(Motion, QueuesNothingAtTheRelease) {
  StartSession();
  EXPECT_EQ(telescope.Slew(kEast, 0, 5), 1);
  EXPECT_THAT(probe.HandFlags(), ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(Motion, ReadsTheFlagsAtTheMomentOfSending) {
  telescope.Slew(kNorth, 1, 1);
  telescope.Slew(kWest, 1, 2);
  EXPECT_THAT(probe.HandFlags(), ElementsAre(0, 0, 0, 1));
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTMV2=1.000000,-50.500000,0.000000"));
}

TEST_F(Motion, SendsNoMoveAtAllWhenTheButtonWasReleasedBeforeTheSending) {
  telescope.Slew(kNorth, 1, 1);
  telescope.Slew(kNorth, 0, 1);
  EXPECT_THAT(probe.Queue(), ElementsAre(4));
  EXPECT_THAT(SentByANewSession(), ElementsAre(kNoMove));
}

TEST_F(Motion, EndsTheMoveOfEveryDirectionAtTheReleaseOfOne) {
  telescope.Slew(kNorth, 1, 1);
  EXPECT_EQ(telescope.Slew(kWest, 0, 1), 1);
  EXPECT_THAT(probe.HandFlags(), ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(probe.Queue(), ElementsAre(4));
  EXPECT_THAT(SentByANewSession(), ElementsAre(kNoMove));
}

TEST_F(Motion, KeepsTheSpeedStepOfTheRelease) {
  telescope.Slew(kNorth, 1, 1);
  telescope.Slew(kNorth, 0, 7);
  EXPECT_THAT(SentByANewSession(), ElementsAre(kNoMove));
  telescope.End();
  // No move tells it, as a move without a direction has no rate.
  EXPECT_EQ(VQCtrlProbe(probe.Device()).HandSpeed(), 7);
}

TEST_F(Motion, MovesNowhereInADirectionThatThereIsNot) {
  telescope.Slew(5, 1, 3);
  EXPECT_THAT(probe.Queue(), ElementsAre(4));
  EXPECT_THAT(probe.HandFlags(), ElementsAre(0, 0, 0, 0));
  EXPECT_THAT(SentByANewSession(), ElementsAre(kNoMove));
}

TEST_F(Motion, IsInAHurryForGoodAfterTheFirstPush) {
  EXPECT_EQ(rhythm.FastPoll(), 0);
  telescope.Slew(kNorth, 0, 1);
  EXPECT_EQ(rhythm.FastPoll(), 0) << "a release";
  telescope.Slew(kNorth, 7, 1);
  EXPECT_EQ(rhythm.FastPoll(), 7);
  EXPECT_THAT(probe.HandFlags(), ElementsAre(7, 0, 0, 0));
  telescope.Slew(kNorth, 0, 1);
  telescope.Stop();
  StartSession();
  telescope.End();
  EXPECT_EQ(rhythm.FastPoll(), 7);
}

TEST_F(Motion, PollsTwiceAsOftenAfterAPush) {
  telescope.Slew(kNorth, 1, 1);
  StartSession();
  EXPECT_THAT(platformCalls.Sleeps(), testing::Each(kPeriodMs / 2));
}

TEST_F(Motion, TellsTheDebuggerAboutEveryHandMove) {
  DebugOutputCapture output;
  telescope.Slew(TELESCOPE_EAST, 7, 9);
  telescope.Slew(TELESCOPE_EAST, 0, 9);
  telescope.Slew(-5, -1, -2);
  EXPECT_EQ(output.Take(),
            "dir 3  push 1  speed 9 ----- \n"
            "dir 3  push 0  speed 9 ----- \n"
            "dir -5  push 1  speed -2 ----- \n");
}

// --- Guiding -----------------------------------------------------------------------------------

TEST_F(Motion, SetsTheGuideSpeed) {
  StartSession();
  EXPECT_EQ(telescope.SetGuideSpeed(0.5, 0.75), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTAGS=0.500000,0.750000"));
}

TEST_F(Motion, SendsTheGuideSpeedOfTheMomentOfSending) {
  telescope.SetGuideSpeed(0.5, 0.75);
  telescope.SetGuideSpeed(1.5, 2.5);
  EXPECT_THAT(SentByANewSession(),
              ElementsAre("$MTAGS=1.500000,2.500000", "$MTAGS=1.500000,2.500000"));
}

TEST_F(Motion, SendsGuidePulsesOneAfterTheOther) {
  EXPECT_EQ(telescope.SlewPulseDuration(250, 120, 60, 30, 0.5, 0.25), 1);
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTMV2=0.250000,0.000000,0.250000",   //
                                               "$MTMV2=0.120000,0.000000,-0.250000",  //
                                               "$MTMV2=0.060000,-0.500000,0.000000",  //
                                               "$MTMV2=0.030000,0.500000,0.000000"));
  // Each pulse and its gap are waited for, and only then does the cycle's own sleep come.
  std::vector<int> sleeps = platformCalls.Sleeps();
  sleeps.resize(4);
  EXPECT_THAT(sleeps, ElementsAre(300, 170, 110, 80));
}

// The mount may have heard it, and be moving, though its answer was lost.
TEST_F(Motion, WaitsForAPulseThatWasNotAnswered) {
  controller.IsSilentTo("$MTMV2=");
  telescope.SlewPulseDuration(60, 0, 0, 0, 1.0, 1.0);
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTMV2=0.060000,0.000000,1.000000"));
  EXPECT_THAT(platformCalls.Sleeps(), testing::Contains(110));
}

TEST_F(Motion, NeitherPollsNorTakesRequestsBetweenPulses) {
  telescope.SlewPulseDuration(150, 150, 0, 0, 1.0, 1.0);
  telescope.AlignReset();
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
  const std::vector<std::string> first =
      UpTo(After(controller.Commands(), "$MTCOM=0.000000,3.000000"), "$MTSTA?");
  ASSERT_EQ(first.size(), 4u);
  EXPECT_THAT(first, ElementsAre("$MTMV2=0.150000,0.000000,1.000000",
                                 "$MTMV2=0.150000,0.000000,-1.000000", "$ALINI=0", "$MTSTA?"));
  // The second one came when the first and its gap were over.
  double times[2] = {};
  for (const auto& datagram : controller.Received()) {
    if (datagram.text == first[0]) times[0] = datagram.timeMs;
    if (datagram.text == first[1]) times[1] = datagram.timeMs;
  }
  EXPECT_GE(times[1] - times[0], 195.0);
}

TEST_F(Motion, LeavesOutPulsesWithoutALength) {
  telescope.SlewPulseDuration(0, -100, 20, INT_MIN, 2.0, 3.0);
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTMV2=0.020000,-2.000000,0.000000"));
  EXPECT_EQ(platformCalls.Sleeps().at(0), 70);
}

TEST_F(Motion, SendsNothingForPulsesOfNoLengthAtAll) {
  telescope.SlewPulseDuration(0, 0, -1, 0, 1.0, 1.0);
  EXPECT_THAT(SentByANewSession(), IsEmpty());
  EXPECT_THAT(platformCalls.Sleeps(), testing::Each(kPeriodMs)) << "there was nothing to wait for";
}

TEST_F(Motion, WaitsForTheLongestPulseThatThereIs) {
  telescope.SlewPulseDuration(INT_MAX, 0, 0, 0, 1.0, 1.0);
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTMV2=2147483.647000,0.000000,1.000000"));
  EXPECT_EQ(platformCalls.Sleeps().at(0), INT_MAX);
}

TEST_F(Motion, HasTheSignsOfEastAndWestTurnedRoundBetweenHandMovesAndPulses) {
  StartSession();
  telescope.Slew(kEast, 1, 1);
  ASSERT_TRUE(Idle());
  telescope.SlewPulseDuration(0, 0, 20, 0, 1.0, 1.0);
  EXPECT_THAT(Sent(), ElementsAre("$MTMV2=1.000000,25.500000,0.000000",
                                  "$MTMV2=0.020000,-1.000000,0.000000"));
}

TEST_F(Motion, OffersNineSpeedSteps) {
  EXPECT_EQ(telescope.GetSlewSpeedMax(), 9);
}

}  // namespace
