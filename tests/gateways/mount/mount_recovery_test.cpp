// SPDX-License-Identifier: MIT
// A controller that goes and comes back.
#include "tests/gateways/mount/simulated_mount.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using velquin::Connection;
using velquin::Event;
using velquin::LinkQuality;
using velquin::Motion;
using velquin::Outcome;
using velquin::Snapshot;
using velquin::Ticket;

class MountRecovery : public SimulatedMount {
 protected:
  void SetUp() override { Begin(); }
  void LoseLink() {
    controller->SetSilent(true);
    ASSERT_TRUE(events.WaitFor(Event::Kind::kLinkLost));
  }
  Event ComesBack() {
    controller->SetSilent(false);
    EXPECT_TRUE(events.WaitFor(Event::Kind::kLinkBack));
    return events.Of(Event::Kind::kLinkBack).at(0);
  }
};

TEST_F(MountRecovery, TheLinkIsLostAfterThreeSilentPolls) {
  const size_t before = controller->Commands("$MTSTA?").size();
  LoseLink();
  const Snapshot lost = events.Of(Event::Kind::kLinkLost)[0].snapshot;
  EXPECT_EQ(lost.connection, Connection::kLost);
  EXPECT_EQ(lost.link.quality, LinkQuality::kLost);
  EXPECT_EQ(mount->State().connection, Connection::kLost);
  int silent = 0;
  for (const auto& datagram : controller->Commands("$MTSTA?")) silent += datagram.fault.silence;
  EXPECT_GE(silent, 3);
  EXPECT_GE(controller->Commands("$MTSTA?").size(), before + 3);
}

TEST_F(MountRecovery, PositionsAgeAndRequestsFailAtOnceMeanwhile) {
  LoseLink();
  EXPECT_TRUE(mount->State().hasReading);
  EXPECT_GT(mount->State().Age(), 1s);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(Of(mount->Goto(High())), Outcome::kLinkLost);
  EXPECT_EQ(Of(mount->Stop()), Outcome::kLinkLost);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 200ms);
}

TEST_F(MountRecovery, WhatWasUnderWayEndsWithThatReason) {
  simulator::SimulatorOptions slow = SimulatedController::Quick();
  slow.mount.limits = {4.0, 4.0};
  events = EventLog();
  Begin(slow);
  const Ticket ticket = mount->Goto(High());
  ASSERT_TRUE(ShowsMotion(Motion::kSlewing));
  LoseLink();
  EXPECT_EQ(Of(ticket), Outcome::kLinkLost);
}

TEST_F(MountRecovery, TellsThatAMountAtRestIsWhereItWas) {
  LoseLink();
  const Event back = ComesBack();
  EXPECT_TRUE(back.samePlace);
  EXPECT_LT(back.movedDegrees, 0.01);
  EXPECT_EQ(back.snapshot.connection, Connection::kConnected);
  EXPECT_EQ(Of(mount->Goto(High())), Outcome::kDone);
}

TEST_F(MountRecovery, TellsThatATrackingMountIsWhereItWas) {
  ASSERT_EQ(Of(mount->Goto(High())), Outcome::kDone);
  LoseLink();
  EXPECT_TRUE(ComesBack().samePlace);
}

// Its right ascension grows meanwhile, by 15 arcseconds a second.
TEST_F(MountRecovery, TellsThatAParkedMountIsWhereItWas) {
  ASSERT_EQ(Of(mount->Park()), Outcome::kDone);
  LoseLink();
  const Event back = ComesBack();
  EXPECT_TRUE(back.samePlace);
  EXPECT_LT(back.movedDegrees, 0.001);
}

TEST_F(MountRecovery, TellsThatTheMountIsElsewhere) {
  ASSERT_EQ(Of(mount->Goto(High())), Outcome::kDone);
  LoseLink();
  controller->Answer("$MTTGT=1,270,30,Elsewhere");
  const Event back = ComesBack();
  EXPECT_FALSE(back.samePlace);
  EXPECT_GT(back.movedDegrees, 0.1);
}

TEST_F(MountRecovery, HandsGuideRatesOverAgain) {
  ASSERT_EQ(Of(mount->SetGuideRates({0.5, 0.5})), Outcome::kDone);
  LoseLink();
  const size_t before = controller->Commands("$MTAGS=0.500000,0.500000").size();
  ComesBack();
  EXPECT_EQ(controller->Commands("$MTAGS=0.500000,0.500000").size(), before + 1);
}

TEST_F(MountRecovery, TriesAgainAtHalfASecondToFive) {
  LoseLink();
  ASSERT_TRUE(Eventually([&] { return controller->Commands("$MTSTA?").size() > 5; }, kSoon));
  std::vector<double> silent;
  const size_t enough = 6;
  ASSERT_TRUE(Eventually(
      [&] {
        silent.clear();
        for (const auto& datagram : controller->Commands("$MTSTA?")) {
          if (datagram.fault.silence) silent.push_back(datagram.timeMs);
        }
        return silent.size() >= enough;
      },
      kSoon));
  // Each attempt waits for its answer for half a second; then comes the pause, of 0.5, 1 and 2 s.
  // The times are those of the arrival, which a busy machine puts off.
  EXPECT_GE(silent[3] - silent[2], 800.0);
  EXPECT_GE(silent[4] - silent[3], 1300.0);
  EXPECT_GE(silent[5] - silent[4], 2300.0);
  EXPECT_LT(silent[5] - silent[4], 5600.0);
}

TEST_F(MountRecovery, DisconnectingEndsTheAttempts) {
  LoseLink();
  mount->Disconnect();
  EXPECT_TRUE(events.WaitFor(Event::Kind::kDisconnected));
  EXPECT_EQ(mount->State().connection, Connection::kDisconnected);
  controller->SetSilent(false);
  EXPECT_FALSE(Eventually([&] { return events.Count(Event::Kind::kLinkBack) > 0; }, 1s));
}

TEST_F(MountRecovery, TheJournalKeepsEachFailedExchange) {
  LoseLink();
  const TempFolder folder;
  mount->WriteJournal(folder.Narrow() + "/", "night");
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
    EXPECT_TRUE(entry.path().filename().string().starts_with("night_timeouterr_"));
    const std::string text = ReadWholeFile(entry.path()).value_or("");
    EXPECT_GE(std::count(text.begin(), text.end(), '\n'), 3);
    EXPECT_NE(text.find(" $MTSTA? : TimeOut\n"), std::string::npos);
    return;
  }
  FAIL() << "no journal";
}

}  // namespace
