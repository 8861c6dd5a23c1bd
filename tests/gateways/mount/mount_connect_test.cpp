// SPDX-License-Identifier: MIT
// Beginning and ending a connection.
#include <future>

#include "tests/gateways/mount/scripted_mount.h"

namespace {

using namespace std::chrono_literals;
using velquin::ConnectFailure;
using velquin::Connection;
using velquin::Event;
using velquin::Motion;
using velquin::MountOptions;
using velquin::Outcome;
using velquin::Snapshot;

class MountConnect : public ScriptedMount {
 protected:
  /// @return why a connection to an address fails.
  ConnectFailure FailureOf(const std::string& address) {
    const int before = events.Count(Event::Kind::kConnectFailed);
    mount->Connect(address);
    EXPECT_TRUE(events.WaitFor(Event::Kind::kConnectFailed, before + 1));
    EXPECT_EQ(mount->State().connection, Connection::kDisconnected);
    return mount->State().failure;
  }
};

TEST_F(MountConnect, TellsWhenItIsConnectedAndWhatTheMountSays) {
  Connect();
  const Snapshot state = mount->State();
  EXPECT_EQ(state.connection, Connection::kConnected);
  EXPECT_TRUE(state.hasReading);
  EXPECT_NEAR(state.position.raHours, 3.0, 1e-9);
  EXPECT_EQ(state.position.decDegrees, 10.0);
  EXPECT_EQ(state.motion, Motion::kTracking);
  EXPECT_EQ(state.pierSide, velquin::PierSide::kWest);
  EXPECT_EQ(state.controllerMjd, 60000.5);
  EXPECT_TRUE(state.ready);
  ASSERT_TRUE(state.hasSite);
  EXPECT_EQ(state.site.latitudeDegrees, 35.681);
  EXPECT_EQ(state.site.longitudeDegrees, 139.767);
  EXPECT_EQ(state.site.zoneHours, 9);
  EXPECT_EQ(mount->ControllerVersion(), "1.00");
  EXPECT_EQ(events.Count(Event::Kind::kConnected), 1);
}

TEST_F(MountConnect, PollsAndNumbersItsSnapshots) {
  Connect();
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 5, kSoonMs));
  const uint64_t sequence = mount->State().sequence;
  controller.Status(kSlewing);
  EXPECT_TRUE(ShowsMotion(Motion::kSlewing));
  EXPECT_GT(mount->State().sequence, sequence);
  EXPECT_GE(mount->State().link.exchanges, 5u);
  EXPECT_EQ(mount->State().link.quality, velquin::LinkQuality::kGood);
  EXPECT_GT(mount->State().link.roundTripMedianMs, 0.0);
}

TEST_F(MountConnect, ConnectingReturnsAtOnceAndFailsWithoutAnAnswer) {
  const auto begin = std::chrono::steady_clock::now();
  mount->Connect("127.13.1.1");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 100ms);
  ASSERT_TRUE(events.WaitFor(Event::Kind::kConnectFailed));
  EXPECT_EQ(events.Of(Event::Kind::kConnectFailed)[0].snapshot.failure, ConnectFailure::kNoAnswer);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 5s);
  // Once failed it stays so.
  EXPECT_EQ(mount->State().connection, Connection::kDisconnected);
}

TEST_F(MountConnect, SaysWhyItFailed) {
  controller.AnswersRaw("$SYVER?", "$SYV");
  EXPECT_EQ(FailureOf(controller.Address()), ConnectFailure::kWrongAnswer);
  controller.Answers("$SYVER?", "$MTSTA=1");
  EXPECT_EQ(FailureOf(controller.Address()), ConnectFailure::kWrongAnswer);
  controller.Answers("$SYVER?", "220 mail ready");
  EXPECT_EQ(FailureOf(controller.Address()), ConnectFailure::kNotAController);
  controller.LooksLikeAMount();
  controller.Answers("$MTMDL?", "$MTMDL=1");
  EXPECT_EQ(FailureOf(controller.Address()), ConnectFailure::kNotAController);
  controller.LooksLikeAMount();
  controller.Status("1,2");
  EXPECT_EQ(FailureOf(controller.Address()), ConnectFailure::kNotAController);
  EXPECT_EQ(FailureOf(""), ConnectFailure::kNameNotFound);
}

TEST_F(MountConnect, SurvivesLostAnswersOfTheHandshake) {
  for (const char* query : {"$SYVER?", "$MTMDL?", "$MTSTA?"}) {
    controller.AnswersOnce(query, simulator::Silence());
  }
  mount->Connect(controller.Address());
  EXPECT_TRUE(events.WaitFor(Event::Kind::kConnected));
}

TEST_F(MountConnect, LooksNamesUpOnAnotherThread) {
  MountOptions options;
  options.resolver = [](const std::string& name) -> std::optional<uint32_t> {
    if (name != "mount.example") return std::nullopt;
    return 0x7F0D0101;  // 127.13.1.1
  };
  Make(options);
  EXPECT_EQ(FailureOf("nobody.example"), ConnectFailure::kNameNotFound);
  EXPECT_EQ(FailureOf("mount.example"), ConnectFailure::kNoAnswer);
}

TEST_F(MountConnect, IsDestroyedAtOnceWhileANameIsLookedUp) {
  const auto goOn = std::make_shared<std::promise<void>>();
  const auto begun = std::make_shared<std::promise<void>>();
  MountOptions options;
  options.resolver = [goOn, begun](const std::string&) -> std::optional<uint32_t> {
    begun->set_value();
    goOn->get_future().wait();
    return std::nullopt;
  };
  Make(options);
  mount->Connect("slow.example");
  begun->get_future().wait();
  const auto begin = std::chrono::steady_clock::now();
  mount.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 400ms);
  goOn->set_value();
}

TEST_F(MountConnect, IsDestroyedWithinOneExchangeWhileItConnects) {
  mount->Connect("127.13.1.1");
  ASSERT_TRUE(ShowsConnection(Connection::kConnecting));
  const auto begin = std::chrono::steady_clock::now();
  mount.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 900ms);
}

TEST_F(MountConnect, DisconnectingEndsItAndWhatWaits) {
  Connect();
  controller.Status(kSlewing);
  const auto ticket = mount->Goto(kTarget);
  ASSERT_TRUE(ShowsMotion(Motion::kSlewing));
  mount->Disconnect();
  EXPECT_EQ(Of(ticket), Outcome::kNotConnected);
  EXPECT_TRUE(events.WaitFor(Event::Kind::kDisconnected));
  EXPECT_EQ(mount->State().connection, Connection::kDisconnected);
  EXPECT_EQ(Of(mount->Goto(kTarget)), Outcome::kNotConnected);
}

TEST_F(MountConnect, TakesNoRequestsBeforeItIsConnected) {
  EXPECT_EQ(Of(mount->Stop()), Outcome::kNotConnected);
  EXPECT_EQ(Of(mount->Home()), Outcome::kNotConnected);
}

TEST_F(MountConnect, ConnectsToAnotherControllerInstead) {
  simulator::ScriptedController other;
  other.LooksLikeAMount();
  other.Answers("$SYVER?", "$SYVER=2.00");
  Connect();
  mount->Connect(other.Address());
  ASSERT_TRUE(events.WaitFor(Event::Kind::kConnected, 2));
  EXPECT_EQ(mount->ControllerVersion(), "2.00");
  EXPECT_EQ(events.Count(Event::Kind::kDisconnected), 1);
}

TEST_F(MountConnect, HandsTheSettingsOfItsOptionsOver) {
  MountOptions options;
  options.guideRates = velquin::GuideRates{0.5, 0.25};
  options.meridian = velquin::MeridianSettings{1.0, 5.0};
  Make(options);
  mount->Connect(controller.Address());
  ASSERT_TRUE(events.WaitFor(Event::Kind::kConnected));
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTAGS=0.500000,0.250000", "$MTCOM=1.000000,5.000000"));
  EXPECT_TRUE(mount->State().hasGuideRates);
  EXPECT_EQ(mount->State().meridian.gotoDegrees, 5.0);
}

TEST_F(MountConnect, PollsFastWhileWatchedAndSlowlyOtherwise) {
  MountOptions options;
  options.activePoll = 20ms;
  options.idlePoll = 1h;
  Make(options);
  Connect();
  mount->SetWatched(true);
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 10, kSoonMs));
  mount->SetWatched(false);
  // At most the one that was under way.
  controller.Clear();
  mount->SetPollPeriods(1h, 1h);
  EXPECT_FALSE(controller.WaitForCount("$MTSTA?", 3, 300));
  mount->SetPollPeriods(20ms, 20ms);
  EXPECT_TRUE(controller.WaitForCount("$MTSTA?", 5, kSoonMs));
}

TEST_F(MountConnect, TwoMountsLiveSideBySide) {
  simulator::ScriptedController other;
  other.LooksLikeAMount();
  other.Status(kParked);
  velquin::Mount second;
  EventLog secondEvents;
  second.AddListener(secondEvents.AsListener());
  Connect();
  second.Connect(other.Address());
  ASSERT_TRUE(secondEvents.WaitFor(Event::Kind::kConnected));
  EXPECT_EQ(second.State().motion, Motion::kParked);
  EXPECT_EQ(mount->State().motion, Motion::kTracking);
}

}  // namespace
