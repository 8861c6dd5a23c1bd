// SPDX-License-Identifier: MIT
// Sync and settings.
#include "tests/gateways/mount/scripted_mount.h"

namespace {

using simulator::Silence;
using velquin::Outcome;
using velquin::Ticket;

class MountRequests : public ScriptedMount {
 protected:
  void SetUp() override { Connect(); }
};

TEST_F(MountRequests, SyncShowsTheNewPositionWhenItIsDone) {
  controller.AnswersInTurn("$MTSTA?", {Line(kTracking), Line(kAtTarget)});
  controller.Status(kAtTarget);
  EXPECT_EQ(Of(mount->Sync(kTarget)), Outcome::kDone);
  EXPECT_THAT(Sent(), testing::ElementsAre("$ALIGN=3,5.500000,22.000000,"));
  EXPECT_EQ(mount->State().position.decDegrees, 22.0);
  EXPECT_EQ(mount->State().target.decDegrees, 22.0);
}

TEST_F(MountRequests, SyncIsTriedOnceMoreWhileTheMountTracks) {
  controller.AnswersOnce("$ALIGN=", Silence());
  EXPECT_EQ(Of(mount->Sync(kTarget)), Outcome::kDone);
  EXPECT_EQ(controller.CountOf("$ALIGN="), 2);
}

TEST_F(MountRequests, SyncIsNotRepeatedAtRest) {
  controller.Status(kAtHome);
  ASSERT_TRUE(ShowsMotion(velquin::Motion::kAtRest));
  controller.AnswersOnce("$ALIGN=", Silence());
  EXPECT_EQ(Of(mount->Sync(kTarget)), Outcome::kNoAnswer);
  EXPECT_EQ(controller.CountOf("$ALIGN="), 1);
}

TEST_F(MountRequests, SyncIsRefusedWhileTheMountMoves) {
  controller.Status(kSlewing);
  ASSERT_TRUE(ShowsMotion(velquin::Motion::kSlewing));
  EXPECT_EQ(Of(mount->Sync(kTarget)), Outcome::kMoving);
  EXPECT_EQ(Of(mount->ResetAlignment()), Outcome::kMoving);
  EXPECT_TRUE(Sent().empty());
}

TEST_F(MountRequests, GuideRatesShowOnceTheyAreAcknowledged) {
  EXPECT_FALSE(mount->State().hasGuideRates);
  controller.AnswersOnce("$MTAGS=", "$MTAGS=ERROR");
  EXPECT_EQ(Of(mount->SetGuideRates({0.5, 0.25})), Outcome::kRefused);
  EXPECT_FALSE(mount->State().hasGuideRates);
  controller.AnswersOnce("$MTAGS=", Silence());
  EXPECT_EQ(Of(mount->SetGuideRates({0.5, 0.25})), Outcome::kDone);
  EXPECT_EQ(mount->State().guideRates.dec, 0.25);
  EXPECT_EQ(controller.CountOf("$MTAGS=0.500000,0.250000"), 3);
}

TEST_F(MountRequests, MeridianSettingsMayBeAnsweredUnderEitherKey) {
  EXPECT_EQ(Of(mount->SetMeridian({1.0, 4.0})), Outcome::kDone);
  controller.Answers("$MTCOM=", "$MTGTS=1");
  EXPECT_EQ(Of(mount->SetMeridian({2.0, 5.0})), Outcome::kDone);
  EXPECT_EQ(mount->State().meridian.stopDegrees, 2.0);
}

TEST_F(MountRequests, ResetsTheAlignment) {
  controller.AnswersOnce("$ALINI=", Silence());
  EXPECT_EQ(Of(mount->ResetAlignment()), Outcome::kDone);
  EXPECT_THAT(Sent(), testing::ElementsAre("$ALINI=0", "$ALINI=0"));
}

TEST_F(MountRequests, AreCarriedOutInTheirOrder) {
  const Ticket first = mount->SetGuideRates({0.1, 0.1});
  const Ticket second = mount->SetMeridian({0.0, 3.0});
  const Ticket third = mount->Sync(kTarget);
  EXPECT_EQ(Of(third), Outcome::kDone);
  EXPECT_TRUE(first.IsKnown());
  EXPECT_TRUE(second.IsKnown());
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTAGS=0.100000,0.100000", "$MTCOM=0.000000,3.000000",
                                           "$ALIGN=3,5.500000,22.000000,"));
}

// An answer takes longer than the time between two polls, so a poll is always overdue.
TEST_F(MountRequests, AreCarriedOutOnALinkThatIsSlowerThanThePolls) {
  controller.SetFaults([](int, std::string_view) { return simulator::Fault{.delayMs = 100}; });
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 3, kSoonMs));
  EXPECT_EQ(Of(mount->SetGuideRates({0.5, 0.5})), Outcome::kDone);
  controller.Clear();
  // And the other way round: requests in a row leave room for polls.
  std::vector<Ticket> tickets;
  for (int i = 0; i < 6; ++i) tickets.push_back(mount->SetGuideRates({0.1, 0.1}));
  EXPECT_EQ(Of(tickets.back()), Outcome::kDone);
  EXPECT_GE(controller.CountOf("$MTSTA?"), 4);
}

}  // namespace
