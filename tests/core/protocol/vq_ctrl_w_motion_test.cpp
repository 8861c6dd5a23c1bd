// SPDX-License-Identifier: MIT
// Hand moves, timed moves, guide speed and meridian settings.
#include <string>

#include "tests/core/protocol/mount_session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Motion : public MountSession {
 protected:
  Motion() { Connect(); }

  /// @return the numbers that a hand move at a speed step sends, without the key.
  std::string HandMove(int step, int north, int south, int east, int west) {
    EXPECT_EQ(session.SetHandSpeed(step, reply), 1);
    EXPECT_EQ(session.HandMove(north, south, east, west, reply), 1);
    const auto sent = Sent();
    return sent.size() == 1 && sent[0].starts_with("$MTMV2=") ? sent[0].substr(7) : "(wrong)";
  }
};

// --- Hand moves ----------------------------------------------------------------------------------

TEST_F(Motion, MovesNorthAtTheFirstStep) {
  EXPECT_EQ(session.HandMove(1, 0, 0, 0, reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTMV2=1.000000,0.000000,25.500000"))
      << "the step at first is 1";
  EXPECT_EQ(Reply(), "$MTMV2=1");
}

TEST_F(Motion, KnowsItsDirections) {
  EXPECT_EQ(HandMove(1, 1, 0, 0, 0), "1.000000,0.000000,25.500000");
  EXPECT_EQ(HandMove(1, 0, 1, 0, 0), "1.000000,0.000000,-25.500000");
  EXPECT_EQ(HandMove(1, 0, 0, 1, 0), "1.000000,25.500000,0.000000") << "east is positive";
  EXPECT_EQ(HandMove(1, 0, 0, 0, 1), "1.000000,-25.500000,0.000000");
  EXPECT_EQ(HandMove(1, 0, 1, 0, 1), "1.000000,-25.500000,-25.500000");
}

TEST_F(Motion, TakesAnyFlagThatIsNotZero) {
  EXPECT_EQ(HandMove(1, -1, 0, 2, 0), "1.000000,25.500000,25.500000");
}

TEST_F(Motion, PrefersNorthToSouthAndWestToEast) {
  EXPECT_EQ(HandMove(3, 1, 1, 0, 0), "1.000000,0.000000,75.500000");
  EXPECT_EQ(HandMove(3, 0, 0, 1, 1), "1.000000,-75.500000,0.000000");
  EXPECT_EQ(HandMove(3, 1, 1, 1, 1), "1.000000,-75.500000,75.500000");
}

TEST_F(Motion, StopsWithoutADirectionAtAnyStep) {
  EXPECT_EQ(HandMove(1, 0, 0, 0, 0), "1.000000,0.000000,0.000000");
  EXPECT_EQ(HandMove(9, 0, 0, 0, 0), "1.000000,0.000000,0.000000");
}

TEST_F(Motion, HasARateForEveryStep) {
  const struct {
    int step;
    const char* rate;
  } table[] = {
      {-2147483647, "0.500000"}, {-2, "0.500000"},    {-1, "0.500000"},           {0, "0.500000"},
      {1, "25.500000"},          {2, "50.500000"},    {3, "75.500000"},           {4, "100.500000"},
      {5, "125.500000"},         {6, "150.500000"},   {7, "175.500000"},          {8, "200.000000"},
      {9, "200.000000"},         {100, "200.000000"}, {2147483647, "200.000000"},
  };
  for (const auto& [step, rate] : table) {
    const std::string text = rate;
    EXPECT_EQ(HandMove(step, 1, 0, 1, 0), "1.000000," + text + "," + text) << step;
    EXPECT_EQ(HandMove(step, 0, 1, 0, 1), "1.000000,-" + text + ",-" + text) << step;
  }
}

TEST_F(Motion, SendsNothingForASpeed) {
  EXPECT_EQ(session.SetHandSpeed(5, reply), 1);
  EXPECT_EQ(Reply(), "untouched");
  EXPECT_EQ(probe.HandSpeed(), 5);
  EXPECT_THAT(controller.Commands(), IsEmpty());
}

TEST_F(Motion, KeepsItsSpeedOverCloseAndOpen) {
  session.SetHandSpeed(5, reply);
  session.Close();
  ASSERT_EQ(Open(), 1);
  Sent();
  session.HandMove(1, 0, 0, 0, reply);
  EXPECT_THAT(Sent(), ElementsAre("$MTMV2=1.000000,0.000000,125.500000"));
}

TEST_F(Motion, ChecksThePrefixOfAMove) {
  controller.AnswersInTurn("$MTMV2=", {"$mtmv2=1", "$MTMV2:1", "$MTMV=1"});
  EXPECT_EQ(session.HandMove(1, 0, 0, 0, reply), 1);
  EXPECT_EQ(session.HandMove(1, 0, 0, 0, reply), 0);
  EXPECT_EQ(session.HandMove(1, 0, 0, 0, reply), 0);
}

// --- Timed moves ---------------------------------------------------------------------------------

TEST_F(Motion, MovesForATimeInMilliseconds) {
  EXPECT_EQ(session.TimedMove(250.0, -0.5, 0.0, reply), 1);
  EXPECT_EQ(session.TimedMove(1.0, 0.0, 0.25, reply), 1);
  EXPECT_EQ(session.TimedMove(12345.6, 1.0, -1.0, reply), 1);
  EXPECT_THAT(Sent(),
              ElementsAre("$MTMV2=0.250000,-0.500000,0.000000", "$MTMV2=0.001000,0.000000,0.250000",
                          "$MTMV2=12.345600,1.000000,-1.000000"));
}

TEST_F(Motion, DoesNotMixSpeedStepsIntoTimedMoves) {
  session.SetHandSpeed(9, reply);
  session.TimedMove(100.0, 0.5, 0.5, reply);
  EXPECT_THAT(Sent(), ElementsAre("$MTMV2=0.100000,0.500000,0.500000"));
}

// --- Settings ------------------------------------------------------------------------------------

TEST_F(Motion, SendsTheGuideSpeed) {
  EXPECT_EQ(session.SendGuideSpeed(0.5, 0.75, reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTAGS=0.500000,0.750000"));
  controller.AnswersInTurn("$MTAGS=", {"$mtags=", "$MTGTS=1"});
  EXPECT_EQ(session.SendGuideSpeed(0.5, 0.75, reply), 1);
  EXPECT_EQ(session.SendGuideSpeed(0.5, 0.75, reply), 0);
}

TEST_F(Motion, SendsTheMeridianSettings) {
  session.SetMeridian(0.0, 3.0, reply);
  session.SetMeridian(-1.5, 12.25, reply);
  EXPECT_THAT(Sent(), ElementsAre("$MTCOM=0.000000,3.000000", "$MTCOM=-1.500000,12.250000"));
}

// The controller answers under the command's own key; another one is looked for.
TEST_F(Motion, TakesTheControllersAnswerToTheMeridianSettingsForAFailure) {
  EXPECT_EQ(session.SetMeridian(0.0, 3.0, reply), 0);
  EXPECT_EQ(Reply(), "$MTCOM=1");
  EXPECT_THAT(Records(), IsEmpty()) << "the keys match";
}

TEST_F(Motion, LooksForAnotherKeyInTheAnswerToTheMeridianSettings) {
  controller.AnswersInTurn("$MTCOM=", {"$MTGTS=1", "$mtgts=1"});
  EXPECT_EQ(session.SetMeridian(0.0, 3.0, reply), 1);
  EXPECT_EQ(session.SetMeridian(0.0, 3.0, reply), 1);
  EXPECT_THAT(Records(), ElementsAre("$MTCOM=0.000000,3.000000 : Return Value Mismatch",
                                     "$MTCOM=0.000000,3.000000 : Return Value Mismatch"));
}

TEST_F(Motion, SendsTheGtsValue) {
  EXPECT_EQ(session.SetGtsValue(7, reply), 1);
  EXPECT_EQ(session.SetGtsValue(-1, reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTGTS=7", "$MTGTS=-1"));
  controller.Answers("$MTGTS=", "$MTCOM=1");
  EXPECT_EQ(session.SetGtsValue(7, reply), 0);
}

}  // namespace
