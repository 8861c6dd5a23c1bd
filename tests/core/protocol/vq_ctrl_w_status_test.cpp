// SPDX-License-Identifier: MIT
// The status poll and what it leaves behind.
#include <set>
#include <string>

#include "tests/core/protocol/mount_session_fixture.h"

namespace {

using simulator::Silence;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kStatus = "60310.25,2,0,0,0,120.5,10.5,-20.25,6.0,-5.25,4";

class StatusPoll : public MountSession {
 protected:
  StatusPoll() { Connect(); }

  int Read() { return session.ReadStatus(position, &state, &ready); }
  int Read(const std::string& values) {
    controller.Status(values);
    return Read();
  }
  int32_t PierSide() {
    int32_t side = 99;
    EXPECT_EQ(session.GetPierSide(&side), 1);
    return side;
  }

  double position[2] = {-1.0, -1.0};
  int32_t state = -1;
  int32_t ready = -1;
};

TEST_F(StatusPoll, HandsOutPositionStateAndReadiness) {
  EXPECT_EQ(Read(kStatus), 1);
  EXPECT_THAT(controller.Commands(), ElementsAre("$MTSTA?"));
  EXPECT_THAT(position, ElementsAre(90.0, -5.25));
  EXPECT_EQ(state, 2);
  EXPECT_EQ(ready, 1);
}

TEST_F(StatusPoll, KeepsWhatItRead) {
  ASSERT_EQ(Read(kStatus), 1);
  EXPECT_EQ(probe.ControllerMjd(), 60310.25);
  EXPECT_EQ(probe.PierSide(), -1);
  EXPECT_EQ(probe.StatusF6(), 10.5);
  EXPECT_EQ(probe.StatusF7(), -20.25);
  EXPECT_EQ(probe.RaDegrees(), 90.0);
  EXPECT_EQ(probe.DecDegrees(), -5.25);
  EXPECT_EQ(probe.Unparked(), 1);
}

TEST_F(StatusPoll, NeedsNeitherPositionNorReadiness) {
  controller.Status(kStatus);
  EXPECT_EQ(session.ReadStatus(nullptr, &state, nullptr), 1);
  EXPECT_EQ(state, 2);
  EXPECT_EQ(probe.RaDegrees(), 90.0);
  EXPECT_EQ(probe.Unparked(), 1);
}

TEST_F(StatusPoll, TakesAnAnswerOfTheKeyAloneForZeros) {
  ASSERT_EQ(Read(kStatus), 1);
  EXPECT_EQ(Read(""), 1);
  EXPECT_THAT(position, ElementsAre(0.0, 0.0));
  EXPECT_EQ(state, 0);
  EXPECT_EQ(ready, 0);
  EXPECT_EQ(probe.ControllerMjd(), 0.0);
  EXPECT_EQ(probe.PierSide(), 1);
  EXPECT_EQ(probe.Unparked(), 0);
  EXPECT_EQ(probe.StatusF6(), 0.0);
}

TEST_F(StatusPoll, TakesAKeyInSmallLetters) {
  controller.Answers("$MTSTA?", std::string("$mtsta=") + kStatus);
  EXPECT_EQ(Read(), 1);
  EXPECT_EQ(position[0], 90.0);
}

TEST_F(StatusPoll, ChangesNothingWhenItFails) {
  ASSERT_EQ(Read(kStatus), 1);
  position[0] = position[1] = state = ready = -1;
  controller.AnswersInTurn("$MTSTA?", {"$SYVER=1.00", simulator::Raw("\r\n"), "$MTSTB=1,1,1",
                                       "garbage", simulator::Raw("$MTSTA=1,2,3")});
  for (int i = 0; i < 5; ++i) EXPECT_EQ(Read(), 0) << i;
  EXPECT_THAT(position, ElementsAre(-1.0, -1.0));
  EXPECT_EQ(state, -1);
  EXPECT_EQ(ready, -1);
  EXPECT_EQ(probe.ControllerMjd(), 60310.25);
  EXPECT_EQ(probe.PierSide(), -1);
  EXPECT_EQ(probe.StatusF6(), 10.5);
  EXPECT_EQ(probe.RaDegrees(), 90.0);
  EXPECT_EQ(probe.Unparked(), 1);
}

TEST_F(StatusPoll, ChangesNothingInSilence) {
  ASSERT_EQ(Read(kStatus), 1);
  controller.IsSilentTo("$MTSTA?");
  patience.End();
  state = -1;
  EXPECT_EQ(Read(), 0);
  EXPECT_EQ(state, -1);
  EXPECT_EQ(probe.RaDegrees(), 90.0);
  EXPECT_THAT(Records(), ElementsAre("$MTSTA? : TimeOut"));
  session.Close();
  EXPECT_EQ(Read(), 0) << "nor does a closed session";
}

TEST_F(StatusPoll, KeepsItsValuesOverCloseAndOpen) {
  ASSERT_EQ(Read(kStatus), 1);
  session.Close();
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(probe.ControllerMjd(), 60310.25);
  EXPECT_EQ(probe.StatusF6(), 10.5);
  EXPECT_EQ(probe.StatusF7(), -20.25);
  EXPECT_EQ(probe.RaDegrees(), 90.0);
  EXPECT_EQ(probe.DecDegrees(), -5.25);
  EXPECT_EQ(probe.Unparked(), 1);
  EXPECT_EQ(PierSide(), 1);
}

TEST_F(StatusPoll, TellsWhetherTheMountIsReadyInEveryStateAndMode) {
  const std::set<int> observing = {3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14};
  for (int sentState = 0; sentState <= 4; ++sentState) {
    for (int mode = -1; mode <= 16; ++mode) {
      ASSERT_EQ(Read("1," + std::to_string(sentState) + ",0,0,0,0,0,0,0,0," + std::to_string(mode)),
                1);
      EXPECT_EQ(state, sentState);
      const int expected = sentState != 3 && observing.count(mode) == 1 ? 1 : 0;
      EXPECT_EQ(ready, expected) << "state " << sentState << ", mode " << mode;
      EXPECT_EQ(probe.Unparked(), expected);
    }
  }
}

TEST_F(StatusPoll, NegatesThePierSide) {
  EXPECT_EQ(PierSide(), 0) << "before the first poll";
  ASSERT_EQ(Read("1,1,0,0,0,90.0"), 1);
  EXPECT_EQ(probe.PierSide(), 1);
  EXPECT_EQ(PierSide(), -1);
  ASSERT_EQ(Read("1,1,0,0,0,90.1"), 1);
  EXPECT_EQ(probe.PierSide(), -1);
  EXPECT_EQ(PierSide(), 1);
}

TEST_F(StatusPoll, SendsNothingForThePierSide) {
  PierSide();
  EXPECT_THAT(controller.Commands(), IsEmpty());
}

TEST_F(StatusPoll, HasNoControllerClockBeforeTheFirstPoll) {
  double mjd = 0.0;
  EXPECT_EQ(session.GetControllerMjd(&mjd), 1);
  EXPECT_EQ(mjd, -1.0);
  EXPECT_THAT(controller.Commands(), IsEmpty());
  ASSERT_EQ(Read(kStatus), 1);
  EXPECT_EQ(session.GetControllerMjd(&mjd), 1);
  EXPECT_EQ(mjd, 60310.25);
}

}  // namespace
