// SPDX-License-Identifier: MIT
// Going to places, and when that is complete.
#include "tests/gateways/mount/scripted_mount.h"

namespace {

using namespace std::chrono_literals;
using simulator::Late;
using simulator::Silence;
using velquin::Event;
using velquin::Motion;
using velquin::Outcome;
using velquin::Ticket;

class MountGoto : public ScriptedMount {
 protected:
  void SetUp() override { Connect(); }
};

TEST_F(MountGoto, IsDoneWhenANewerStatusShowsTheMountAtItsTarget) {
  controller.AnswersInTurn("$MTSTA?", {Line(kSlewing), Line(kSlewing), Line(kAtTarget)});
  const Ticket ticket = mount->Goto(kTarget);
  EXPECT_EQ(Of(ticket), Outcome::kDone);
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTTGT=3,5.500000,22.000000,"));
  EXPECT_EQ(mount->State().motion, Motion::kTracking);
  EXPECT_EQ(mount->State().target.raHours, kTarget.raHours);
}

// The snapshot is published before the ticket ends, so whoever waits for the ticket sees it.
TEST_F(MountGoto, ShowsItsEndBeforeItTellsIt) {
  controller.AnswersInTurn("$MTSTA?", {Line(kSlewing), Line(kAtTarget)});
  std::atomic<bool> wasThere = false;
  mount->Goto(kTarget).OnKnown([&](Outcome) {
    wasThere =
        mount->State().motion == Motion::kTracking && mount->State().position.decDegrees == 22.0;
  });
  ASSERT_TRUE(events.WaitFor(Event::Kind::kTicketKnown));
  EXPECT_TRUE(Eventually([&] { return wasThere.load(); }, kSoon));
}

// An answer of before the goto says "at rest at the target" while the goto is on its way.
TEST_F(MountGoto, IsNotEndedByAStatusThatIsOlderThanTheCommand) {
  controller.Status(kAtTarget);
  ASSERT_TRUE(Eventually([&] { return mount->State().position.decDegrees == 22.0; }, kSoon));
  controller.AnswersOnce("$MTSTA?", Late(Line(kAtTarget), 200));
  controller.Clear();
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));  // under way, answered late
  const Ticket ticket = mount->Goto({7.0, 40.0});
  controller.Status(kSlewing);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", controller.CountOf("$MTSTA?") + 5, kSoonMs));
  EXPECT_FALSE(ticket.IsKnown());
  EXPECT_EQ(mount->State().motion, Motion::kSlewing);
}

TEST_F(MountGoto, ShowsASlewBeforeTheMountHasBegunIt) {
  const Ticket ticket = mount->Goto(kTarget);  // the status says "tracking" elsewhere, for now
  ASSERT_TRUE(ShowsMotion(Motion::kSlewing));
  EXPECT_FALSE(ticket.IsKnown());
  controller.Status(kAtTarget);
  EXPECT_EQ(Of(ticket), Outcome::kDone);
}

TEST_F(MountGoto, ToWhereTheMountAlreadyIsIsDoneToo) {
  controller.Status(kAtTarget);
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kDone);
}

TEST_F(MountGoto, FailsWhenTheMountStopsElsewhere) {
  controller.AnswersInTurn("$MTSTA?", {Line(kSlewing), Line(kTracking)});
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kStoppedElsewhere);
}

TEST_F(MountGoto, TheFirstOfTwoIsOvertaken) {
  controller.Status(kSlewing);
  const Ticket first = mount->Goto({1.0, 1.0});
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  const Ticket second = mount->Goto(kTarget);
  EXPECT_EQ(Of(first), Outcome::kOvertaken);
  controller.Status(kAtTarget);
  EXPECT_EQ(Of(second), Outcome::kDone);
}

TEST_F(MountGoto, OneThatStillWaitsIsOvertakenUnsent) {
  controller.Answers("$MTAGS=", Late("$MTAGS=1", 200));
  controller.Status(kSlewing);
  mount->SetGuideRates({0.5, 0.5});
  const Ticket first = mount->Goto({1.0, 1.0});
  const Ticket second = mount->Park();
  EXPECT_EQ(Of(first), Outcome::kOvertaken);
  ASSERT_TRUE(ShowsMotion(Motion::kParking));
  controller.Status(kParked);
  EXPECT_EQ(Of(second), Outcome::kDone);
  EXPECT_EQ(controller.CountOf("$MTTGT="), 1);
}

TEST_F(MountGoto, ARefusedOneLeavesTheOneUnderWay) {
  controller.Status(kSlewing);
  const Ticket first = mount->Goto(kTarget);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  EXPECT_EQ(Of(mount->Goto({1.0, -80.0})), Outcome::kBelowHorizon);
  EXPECT_FALSE(first.IsKnown());
  EXPECT_EQ(mount->State().target.decDegrees, kTarget.decDegrees);
  controller.Status(kAtTarget);
  EXPECT_EQ(Of(first), Outcome::kDone);
}

TEST_F(MountGoto, TellsWhatTheControllerSays) {
  controller.AnswersOnce("$MTTGT=", "$MTTGT=belowhorizon");
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kBelowHorizon);
  controller.AnswersOnce("$MTTGT=", "$MTTGT=ERROR");
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kRefused);
  controller.AnswersOnce("$MTTGT=", "$ERROR=COMMAND");
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kRefused);
  EXPECT_EQ(controller.CountOf("$MTTGT="), 3);
}

TEST_F(MountGoto, IsTriedOnceMoreAndNoMore) {
  controller.AnswersOnce("$MTTGT=", Silence());
  controller.Status(kAtTarget);
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kDone);
  EXPECT_EQ(controller.CountOf("$MTTGT="), 2);
  controller.IsSilentTo("$MTTGT=");
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kNoAnswer);
  EXPECT_EQ(controller.CountOf("$MTTGT="), 4);
}

TEST_F(MountGoto, RefusesValuesThatAreNoPlace) {
  EXPECT_EQ(Of(mount->Goto({24.0, 0.0})), Outcome::kInvalidValue);
  EXPECT_EQ(controller.CountOf("$MTTGT="), 0);
}

TEST_F(MountGoto, IsRefusedWhileParked) {
  controller.Status(kParked);
  ASSERT_TRUE(ShowsMotion(Motion::kParked));
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kParked);
  EXPECT_EQ(Of(mount->Home()), Outcome::kParked);
  EXPECT_EQ(Of(mount->Sync(kTarget)), Outcome::kParked);
  EXPECT_EQ(Of(mount->MoveAxis(velquin::Axis::kRa, 10.0)), Outcome::kParked);
  EXPECT_EQ(Of(mount->Guide({100ms, 0ms})), Outcome::kParked);
  EXPECT_TRUE(Sent().empty());
}

TEST_F(MountGoto, HomeIsDoneWhenTheMountRestsThere) {
  controller.AnswersInTurn("$MTSTA?", {Line(kSlewing)});
  const Ticket ticket = mount->Home();
  ASSERT_TRUE(ShowsMotion(Motion::kHoming));
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTTGT=1,270.000000,0.000000,Home"));
  controller.Status(kAtHome);
  EXPECT_EQ(Of(ticket), Outcome::kDone);
  EXPECT_EQ(mount->State().motion, Motion::kAtRest);
}

TEST_F(MountGoto, ParkSendsTheParkCoordinatesOfTheStatus) {
  controller.Status(kSlewing);
  const Ticket ticket = mount->Park();
  ASSERT_TRUE(ShowsMotion(Motion::kParking));
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTTGT=2,270.000000,30.000000,Park"));
  controller.Status(kParked);
  EXPECT_EQ(Of(ticket), Outcome::kDone);
  EXPECT_FALSE(mount->State().ready);
  controller.Clear();
  EXPECT_EQ(Of(mount->Park()), Outcome::kDone);
  EXPECT_TRUE(Sent().empty());
}

TEST_F(MountGoto, UnparkGoesToWhereTheMountPoints) {
  controller.Status(kParked);
  ASSERT_TRUE(ShowsMotion(Motion::kParked));
  const Ticket ticket = mount->Unpark();
  ASSERT_TRUE(controller.WaitFor("$MTTGT=3,7.000000,60.000000,Star", kSoonMs));
  controller.Status("60000.5,1,0,0,270.0,60.0,270.0,30.0,7.0,60.0,4");
  EXPECT_EQ(Of(ticket), Outcome::kDone);
}

TEST_F(MountGoto, EveryTicketIsToldOnce) {
  controller.Status(kAtTarget);
  std::vector<uint64_t> ids;
  for (int i = 0; i < 5; ++i) {
    const Ticket ticket = mount->Goto(kTarget);
    ids.push_back(ticket.Id());
    Of(ticket);
  }
  ASSERT_TRUE(events.WaitFor(Event::Kind::kTicketKnown, 5));
  std::vector<uint64_t> told;
  for (const Event& event : events.Of(Event::Kind::kTicketKnown)) told.push_back(event.ticketId);
  EXPECT_EQ(told, ids);
}

}  // namespace
