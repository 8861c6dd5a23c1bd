// SPDX-License-Identifier: MIT
// Goto, home, park, unpark, alignment and stop.
#include <string>

#include "res/string_ids.h"
#include "tests/core/protocol/mount_session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Target : public MountSession {
 protected:
  Target() { Connect(); }

  int Goto(double raDegrees, double decDegrees, const char* name = "", int32_t mode = 3) {
    const double position[2] = {raDegrees, decDegrees};
    return session.Goto(mode, position, name, reply);
  }
  int Align(double raDegrees, double decDegrees, const char* name = "", int32_t mode = 3) {
    const double position[2] = {raDegrees, decDegrees};
    return session.Align(position, mode, name, reply);
  }
  static std::string BelowHorizonText() {
    CString text;
    EXPECT_TRUE(text.LoadString(10002));
    return text.GetString();
  }
};

// --- Goto ----------------------------------------------------------------------------------------

TEST_F(Target, SendsRightAscensionInHoursAndDeclinationInDegrees) {
  EXPECT_EQ(Goto(83.633, 22.0145), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=3,5.575533,22.014500,")) << "the last comma stays";
  EXPECT_EQ(Reply(), "$MTTGT=1");
}

TEST_F(Target, SendsPositionsAsTheyAre) {
  Goto(0.0, -5.25);
  Goto(360.0, 90.0);
  Goto(-15.0, -90.0);
  Goto(359.9999999, -0.0000001);
  EXPECT_THAT(Sent(),
              ElementsAre("$MTTGT=3,0.000000,-5.250000,", "$MTTGT=3,24.000000,90.000000,",
                          "$MTTGT=3,-1.000000,-90.000000,", "$MTTGT=3,24.000000,-0.000000,"));
}

TEST_F(Target, SendsModeAndNameAsTheyAre) {
  Goto(15.0, 1.0, "M42 100%s,\x93\x56", 7);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=7,1.000000,1.000000,M42 100%s,\x93\x56"));
}

TEST_F(Target, TakesAnAcknowledgementOfAnyCaseAndContent) {
  controller.AnswersInTurn("$MTTGT=", {"$mttgt=1", "$MTTGT=", "$MtTgT=whatever"});
  EXPECT_EQ(Goto(15.0, 1.0), 1);
  EXPECT_EQ(Goto(15.0, 1.0), 1);
  EXPECT_EQ(Goto(15.0, 1.0), 1);
  EXPECT_THAT(app.boxes, IsEmpty());
}

TEST_F(Target, FailsQuietlyAtAnotherPrefix) {
  controller.AnswersInTurn("$MTTGT=", {"$MTTGT:1", "$ALIGN=1", "$MTTG", "MTTGT=1"});
  for (int i = 0; i < 4; ++i) EXPECT_EQ(Goto(15.0, 1.0), 0) << i;
  EXPECT_EQ(Reply(), "MTTGT=1") << "the caller gets the line all the same";
  EXPECT_THAT(app.boxes, IsEmpty());
}

// --- Below the horizon ---------------------------------------------------------------------------

TEST_F(Target, TellsTheUserThatATargetIsBelowTheHorizon) {
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  EXPECT_EQ(Goto(15.0, 1.0), 0);
  ASSERT_EQ(app.boxes.size(), 1u);
  EXPECT_EQ(app.boxes[0].text, BelowHorizonText());
  EXPECT_EQ(app.boxes[0].type, 0u) << "one OK button, no icon asked for";
  EXPECT_EQ(app.boxes[0].helpId, 0u);
  EXPECT_EQ(Reply(), "$MTTGT=BELOWHORIZON");
}

TEST_F(Target, KnowsTheAnswerAboutTheHorizonInAnyCase) {
  controller.AnswersInTurn("$MTTGT=", {"$MTTGT=belowhorizon", "$mttgt=BelowHorizon"});
  EXPECT_EQ(Goto(15.0, 1.0), 0);
  EXPECT_EQ(Goto(15.0, 1.0), 0);
  EXPECT_EQ(app.boxes.size(), 2u);
}

TEST_F(Target, KnowsOnlyTheWholeWordAboutTheHorizon) {
  controller.AnswersInTurn("$MTTGT=",
                           {"$MTTGT=BELOWHORIZON2", "$MTTGT=BELOW", "$MTTGT= BELOWHORIZON"});
  for (int i = 0; i < 3; ++i) EXPECT_EQ(Goto(15.0, 1.0), 1) << i;
  EXPECT_THAT(app.boxes, IsEmpty());
}

TEST_F(Target, TellsOfTheHorizonForParkAndUnparkToo) {
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  EXPECT_EQ(session.GotoPark(reply), 0);
  EXPECT_EQ(session.GotoStar(reply), 0);
  EXPECT_EQ(app.boxes.size(), 2u);
}

TEST_F(Target, DoesNotLookForTheHorizonOnTheWayHome) {
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  EXPECT_EQ(session.GotoHome(reply), 1);
  EXPECT_EQ(Reply(), "$MTTGT=BELOWHORIZON");
  EXPECT_THAT(app.boxes, IsEmpty());
}

TEST_F(Target, HasTheTextAboutTheHorizonInTheSystemsCodePage) {
#ifdef _WIN32
  // Code page 932, which the tests' locale has.
  EXPECT_EQ(BelowHorizonText(),
            "\x93\x56\x91\xCC\x82\xAA\x92\x6E\x95\xBD\x90\xFC\x89\xBA\x82\xC5\x82\xB7\x81\x42");
#else
  EXPECT_EQ(BelowHorizonText(), "天体が地平線下です。");
#endif
}

// --- Home, park, unpark --------------------------------------------------------------------------

TEST_F(Target, GoesHome) {
  EXPECT_EQ(session.GotoHome(reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=1,270.000000,0.000000,Home"));
}

TEST_F(Target, GoesHomeOnlyWhenTheControllerSaysSo) {
  controller.AnswersInTurn("$MTTGT=", {"$mttgt=1", "$MTTGT:1", "$MTSTP=1"});
  EXPECT_EQ(session.GotoHome(reply), 1);
  EXPECT_EQ(session.GotoHome(reply), 0);
  EXPECT_EQ(session.GotoHome(reply), 0);
}

TEST_F(Target, ParksAtTheCoordinatesOfTheLastStatusUnconverted) {
  PollStatus("1,1,0,0,0,0,123.456789,-45.5,6.0,10.0,4");
  EXPECT_EQ(session.GotoPark(reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=2,123.456789,-45.500000,Park"));
}

TEST_F(Target, UnparksByGoingWhereTheLastStatusWas) {
  PollStatus("1,3,0,0,0,0,10,20,6.25,-10.5,4");
  EXPECT_EQ(session.GotoStar(reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=3,6.250000,-10.500000,Star"));
}

// What the last status said stays through Close and Open, until the next one.
TEST_F(Target, ParksAndUnparksByTheLastStatusOfTheSessionBefore) {
  PollStatus("1,3,0,0,0,0,123.456789,-45.5,6.25,-10.5,4");
  session.Close();
  ASSERT_EQ(Open(), 1);
  Sent();
  EXPECT_EQ(session.GotoStar(reply), 1);
  EXPECT_EQ(session.GotoPark(reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=3,6.250000,-10.500000,Star",
                                  "$MTTGT=2,123.456789,-45.500000,Park"));
  PollStatus("1,3,0,0,0,0,1,2,3,4,4");
  session.GotoStar(reply);
  session.GotoPark(reply);
  EXPECT_THAT(Sent(),
              ElementsAre("$MTTGT=3,3.000000,4.000000,Star", "$MTTGT=2,1.000000,2.000000,Park"));
}

TEST_F(Target, ParksAndUnparksAtZeroBeforeTheFirstStatus) {
  session.GotoPark(reply);
  session.GotoStar(reply);
  EXPECT_THAT(Sent(),
              ElementsAre("$MTTGT=2,0.000000,0.000000,Park", "$MTTGT=3,0.000000,0.000000,Star"));
}

// --- Alignment and stop --------------------------------------------------------------------------

TEST_F(Target, AlignsOnAPosition) {
  EXPECT_EQ(Align(83.633, -22.0145), 1);
  EXPECT_EQ(Align(15.0, 1.0, "Sirius", 4), 1);
  EXPECT_THAT(Sent(),
              ElementsAre("$ALIGN=3,5.575533,-22.014500,", "$ALIGN=4,1.000000,1.000000,Sirius"));
}

TEST_F(Target, DoesNotLookForTheHorizonWhenAligning) {
  controller.AnswersInTurn("$ALIGN=", {"$ALIGN=BELOWHORIZON", "$align=1", "$MTTGT=1"});
  EXPECT_EQ(Align(15.0, 1.0), 1);
  EXPECT_EQ(Align(15.0, 1.0), 1);
  EXPECT_EQ(Align(15.0, 1.0), 0);
  EXPECT_THAT(app.boxes, IsEmpty());
}

TEST_F(Target, ResetsTheAlignmentWhateverTheAnswer) {
  controller.AnswersInTurn("$ALINI=", {"$ALINI=1", "$MTTGT=1", simulator::Raw("nothing")});
  EXPECT_EQ(session.ResetAlign(reply), 1);
  EXPECT_EQ(Reply(), "$ALINI=1");
  EXPECT_EQ(session.ResetAlign(reply), 1);
  EXPECT_EQ(Reply(), "$MTTGT=1");
  EXPECT_EQ(session.ResetAlign(reply), 1);
  EXPECT_EQ(Reply(), "");
  EXPECT_THAT(Sent(), ElementsAre("$ALINI=0", "$ALINI=0", "$ALINI=0"));
}

TEST_F(Target, ResetsTheAlignmentEvenInSilenceAndWhileClosed) {
  session.Close();
  EXPECT_EQ(session.ResetAlign(reply), 1);
  EXPECT_EQ(Reply(), "");
  Connect();
  controller.IsSilentTo("$ALINI=0");
  patience.End();
  EXPECT_EQ(session.ResetAlign(reply), 1);
  EXPECT_THAT(Records(), ElementsAre("$ALINI=0 : TimeOut"));
}

TEST_F(Target, Stops) {
  EXPECT_EQ(session.StopMotion(reply), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTSTP=1"));
}

TEST_F(Target, DoesNotTakeAColonForAnEqualsSign) {
  controller.Answers("$MTSTP=1", "$MTSTP:1");
  EXPECT_EQ(session.StopMotion(reply), 0);
  EXPECT_THAT(Records(), IsEmpty()) << "the keys match";
}

}  // namespace
