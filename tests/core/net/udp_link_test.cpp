// SPDX-License-Identifier: MIT
// Opening, closing, and exchanges that go well.
#include "core/net/udp_link.h"

#include <memory>

#include "tests/core/net/udp_link_fixture.h"

namespace {

using simulator::FromElsewhere;
using simulator::ScriptedController;
using testing::ElementsAre;
using testing::IsEmpty;

uint32_t Address(const char* dotted) {
  return platform::AddressFromText(dotted);
}

// --- Construction and destruction ----------------------------------------------------------------

TEST_F(UdpLink, IsClosedAtFirst) {
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(probe.Socket(), platform::kInvalidSocket);
  EXPECT_EQ(probe.RemotePort(), 60023);
  EXPECT_EQ(probe.LocalPort(), 0);
  EXPECT_EQ(probe.TimeOut().seconds, 0);
  EXPECT_EQ(probe.TimeOut().microseconds, 500000);
  EXPECT_EQ(probe.Buffer(), nullptr);
  EXPECT_EQ(probe.BytesHeld(), 0);
  EXPECT_EQ(probe.Capacity(), 0);
  EXPECT_THAT(RecordsOf(link), IsEmpty());
}

TEST(UdpLinkLife, StartsAndStopsTheSystemsSockets) {
  PlatformFaults faults;
  {
    CUdpLink link;
    EXPECT_EQ(faults.socketsStarted, 1);
    EXPECT_EQ(faults.versionWord, 2) << "version 2.0";
    EXPECT_EQ(faults.socketsStopped, 0);
  }
  EXPECT_EQ(faults.socketsStopped, 1);
  EXPECT_EQ(faults.socketsClosed, 0) << "it was never open";
}

// The library as a whole starts them, too, and does not load when that fails.
TEST_F(UdpLink, WorksThoughItsOwnStartOfTheSystemsSocketsFailed) {
  constexpr int kTooManyUsers = 10067;
  faults.startSockets = [](uint16_t, platform::SocketStartupData&) { return kTooManyUsers; };
  controller.Answers("$SYVER?", "$SYVER=1.00");
  CUdpLink other;
  faults.startSockets = nullptr;
  platform::SocketStartupData data;
  ASSERT_EQ(platform::StartSockets(2, data), 0) << "the link stops them all the same";
  ASSERT_EQ(other.Open(controller.Address().c_str(), ScriptedController::kPort), 1);
  EXPECT_STREQ(other.Query("$SYVER?"), "$SYVER=1.00");
}

TEST(UdpLinkLife, ClosesAnOpenLinkInTheEnd) {
  PlatformFaults faults;
  {
    CUdpLink link;
    ASSERT_EQ(link.Open("127.0.0.1", 60099), 1);
  }
  EXPECT_EQ(faults.socketsClosed, 1);
  EXPECT_EQ(faults.socketsStopped, 1);
}

// --- Time-out ------------------------------------------------------------------------------------

TEST_F(UdpLink, SplitsTheTimeOutIntoSecondsAndMicroseconds) {
  EXPECT_EQ(link.SetTimeOut(1500), 1);
  EXPECT_EQ(probe.TimeOut().seconds, 1);
  EXPECT_EQ(probe.TimeOut().microseconds, 500000);
  EXPECT_EQ(link.SetTimeOut(2999), 1);
  EXPECT_EQ(probe.TimeOut().seconds, 2);
  EXPECT_EQ(probe.TimeOut().microseconds, 999000);
}

TEST_F(UdpLink, RefusesANewTimeOutWhileConnected) {
  Connect(1500);
  EXPECT_EQ(link.SetTimeOut(200), 0);
  EXPECT_EQ(probe.TimeOut().seconds, 1);
  EXPECT_EQ(probe.TimeOut().microseconds, 500000);
  link.Close();
  EXPECT_EQ(link.SetTimeOut(200), 1);
}

// --- Opening and closing -------------------------------------------------------------------------

TEST_F(UdpLink, OpensOnALocalPortThatTheSystemChooses) {
  platform::SocketAddress bound;
  faults.bindSocket = [&](platform::SocketHandle socket, const platform::SocketAddress& address) {
    bound = address;
    return platform::BindSocket(socket, address);
  };
  Connect();
  EXPECT_EQ(bound.addressNetworkOrder, 0u) << "any address of this machine";
  EXPECT_EQ(bound.portNetworkOrder, 0);
  EXPECT_NE(link.GetLocalPort(), 0);
  controller.Answers("hello", "hello");
  Query("hello");
  ASSERT_EQ(controller.Received().size(), 1u);
  EXPECT_EQ(controller.Received()[0].fromPort, link.GetLocalPort());
}

TEST_F(UdpLink, TellsNoLocalPortWhileClosed) {
  EXPECT_EQ(link.GetLocalPort(), 65535);
  Connect();
  EXPECT_NE(link.GetLocalPort(), 65535);
  link.Close();
  EXPECT_EQ(link.GetLocalPort(), 65535);
}

TEST_F(UdpLink, HasABufferOnlyWhileOpen) {
  Connect();
  EXPECT_EQ(probe.Capacity(), 4096);
  EXPECT_EQ(probe.BytesHeld(), 0);
  ASSERT_NE(probe.Buffer(), nullptr);
  EXPECT_EQ(probe.Buffer()[0], '\0');
  link.Close();
  EXPECT_EQ(probe.Buffer(), nullptr);
  EXPECT_EQ(probe.Capacity(), 0);
  EXPECT_FALSE(probe.Connected());
}

TEST_F(UdpLink, TakesADottedAddressWithoutALookUp) {
  EXPECT_EQ(link.Open("192.168.0.1", 60023), 1);
  EXPECT_EQ(faults.namesLookedUp, 0);
  EXPECT_EQ(probe.RemoteAddress(), Address("192.168.0.1"));
  const platform::SocketAddress& remote = probe.RemoteSocketAddress();
  EXPECT_EQ(remote.addressNetworkOrder, Address("192.168.0.1"));
  EXPECT_EQ(platform::PortOf(remote), 60023);
  EXPECT_EQ(remote.family, platform::MakeAddress(0, 0).family);
  EXPECT_THAT(remote.zero, testing::Each(0));
}

TEST_F(UdpLink, LooksANameUp) {
  EXPECT_EQ(link.Open("localhost", 60099), 1);
  EXPECT_EQ(faults.namesLookedUp, 1);
  EXPECT_EQ(probe.RemoteAddress(), Address("127.0.0.1"));
  EXPECT_EQ(probe.RemotePort(), 60099);
}

TEST_F(UdpLink, TalksToTheAddressThatTheNameStandsFor) {
  faults.lookUpHost = [this](const std::string& name, uint32_t& address) {
    EXPECT_EQ(name, "mount.example");
    address = Address(controller.Address().c_str());
    return true;
  };
  controller.Answers("$SYVER?", "$SYVER=1.00");
  ASSERT_EQ(link.Open("mount.example", ScriptedController::kPort), 1);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
}

TEST_F(UdpLink, DoesNotOpenForAnUnknownName) {
  faults.lookUpHost = [](const std::string&, uint32_t&) { return false; };
  EXPECT_EQ(link.Open("no.such.host.invalid", 60023), 0);
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(link.GetLocalPort(), 65535);
}

// It reads like an error code of the conversion, so it is taken for a name.
TEST_F(UdpLink, LooksTheBroadcastAddressUpAsAName) {
  std::string lookedUp;
  faults.lookUpHost = [&](const std::string& name, uint32_t&) {
    lookedUp = name;
    return false;
  };
  EXPECT_EQ(link.Open("255.255.255.255", 60023), 0);
  EXPECT_EQ(lookedUp, "255.255.255.255");
}

TEST_F(UdpLink, RefusesToOpenTwice) {
  Connect();
  controller.Answers("two lines", simulator::Raw("one\r\ntwo\r\n"));
  ASSERT_EQ(Query("two lines"), "one");
  const platform::SocketHandle socket = probe.Socket();
  const uint16_t localPort = link.GetLocalPort();
  EXPECT_EQ(link.Open("192.168.0.1", 12345), 0);
  EXPECT_EQ(faults.socketsOpened, 1);
  EXPECT_EQ(probe.Socket(), socket);
  EXPECT_EQ(link.GetLocalPort(), localPort);
  EXPECT_EQ(probe.RemotePort(), ScriptedController::kPort);
  EXPECT_EQ(probe.RemoteAddress(), Address(controller.Address().c_str()));
  EXPECT_EQ(probe.Unread(), "two\r\n");
  EXPECT_EQ(Query("two lines"), "two") << "still over the first connection";
}

TEST_F(UdpLink, OpensAgainAfterClosing) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  link.Close();
  EXPECT_EQ(Query("$SYVER?"), "");
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  EXPECT_EQ(controller.CountOf("$SYVER?"), 2);
}

TEST_F(UdpLink, MayBeClosedAnyNumberOfTimes) {
  link.Close();
  EXPECT_EQ(faults.socketsClosed, 0);
  Connect();
  link.Close();
  link.Close();
  EXPECT_EQ(faults.socketsClosed, 1);
}

TEST_F(UdpLink, DropsUnreadBytesWhenClosed) {
  controller.Answers("a", simulator::Raw("one\r\nleft over\r\n"));
  controller.Answers("b", "fresh");
  Connect();
  ASSERT_EQ(Query("a"), "one");
  link.Close();
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(Query("b"), "fresh");
}

TEST_F(UdpLink, KeepsItsRecordsWhenClosed) {
  controller.Answers("$SYVER?", "$MTSTA=0");
  Connect();
  Query("$SYVER?");
  link.Close();
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Return Value Mismatch"));
  ASSERT_EQ(Open(), 1);
  Query("$SYVER?");
  EXPECT_EQ(Records().size(), 2u);
}

// --- Exchanges -----------------------------------------------------------------------------------

TEST_F(UdpLink, SendsTheCommandWithALineEndAndReturnsTheLineWithoutOne) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  ASSERT_EQ(controller.Received().size(), 1u);
  EXPECT_EQ(controller.Received()[0].bytes, "$SYVER?\r\n");
  EXPECT_THAT(Records(), IsEmpty());
}

TEST_F(UdpLink, ReturnsAReplyUnderAnotherKeyButRecordsIt) {
  controller.Answers("$SYVER?", "$MTSTA=0");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$MTSTA=0");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Return Value Mismatch"));
}

TEST_F(UdpLink, ComparesKeysWithRegardToCase) {
  controller.Answers("$SYVER?", "$syver=1.00");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$syver=1.00");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Return Value Mismatch"));
}

TEST_F(UdpLink, ComparesWholeKeys) {
  controller.Answers("$SYVER?", "$SYVERS=1.00");
  Connect();
  Query("$SYVER?");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Return Value Mismatch"));
}

TEST_F(UdpLink, DoesNotLookBehindTheKey) {
  controller.Answers("$MTSTP=1", "$MTSTP:refused");
  Connect();
  EXPECT_EQ(Query("$MTSTP=1"), "$MTSTP:refused");
  EXPECT_THAT(Records(), IsEmpty());
}

TEST_F(UdpLink, MatchesALineWithoutDollarToACommandWithoutOne) {
  controller.Answers("ping", "pong");
  controller.Answers("plain", "$PLAIN=1");
  Connect();
  EXPECT_EQ(Query("ping"), "pong");
  EXPECT_THAT(Records(), IsEmpty());
  EXPECT_EQ(Query("plain"), "$PLAIN=1");
  EXPECT_THAT(Records(), ElementsAre("plain : Return Value Mismatch"));
}

TEST_F(UdpLink, FindsTheKeyOfALine) {
  EXPECT_EQ(UdpLinkProbe::CommandKey("$SYVER?"), "$SYVER");
  EXPECT_EQ(UdpLinkProbe::CommandKey("$SYVER=1.00"), "$SYVER");
  EXPECT_EQ(UdpLinkProbe::CommandKey("$MTSTA=1,0"), "$MTSTA");
  EXPECT_EQ(UdpLinkProbe::CommandKey("$MTMV2=1.0"), "$MTMV2");
  EXPECT_EQ(UdpLinkProbe::CommandKey("OK"), "");
  EXPECT_EQ(UdpLinkProbe::CommandKey(""), "");
  EXPECT_EQ(UdpLinkProbe::CommandKey("$"), "$");
  EXPECT_EQ(UdpLinkProbe::CommandKey("$$A"), "$");
  EXPECT_EQ(UdpLinkProbe::CommandKey(" $SYVER?"), "");
  EXPECT_EQ(UdpLinkProbe::CommandKey("$a1B2_C"), "$a1B2");
}

// Half of the bytes of a Japanese character are letters; the first of them ends the key.
TEST_F(UdpLink, EndsTheKeyAtABeginningOfAWideCharacter) {
  EXPECT_EQ(UdpLinkProbe::CommandKey("$MT\x93\x56=1"), "$MT");
  EXPECT_EQ(UdpLinkProbe::CommandKey("$MT\xB1=1"), "$MT");
}

// Nothing but the key tells whose answer it is.
TEST_F(UdpLink, TakesAReplyFromAnyone) {
  controller.Answers("$SYVER?", FromElsewhere("$SYVER=stranger"));
  controller.Answers("$MTSTA?", FromElsewhere("$OTHER=1"));
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=stranger");
  EXPECT_THAT(Records(), IsEmpty());
  EXPECT_EQ(Query("$MTSTA?"), "$OTHER=1");
  EXPECT_THAT(Records(), ElementsAre("$MTSTA? : Return Value Mismatch"));
}

TEST_F(UdpLink, AnswersTheNextQueryWithALateReply) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  controller.Answers("$MTMDL?", "$MTMDL=1,2,3");
  Connect();
  ASSERT_NO_FATAL_FAILURE(QueryAnsweredLate("$MTSTA?", "$MTSTA=late\r\n"));
  EXPECT_EQ(Query("$SYVER?"), "$MTSTA=late");
  EXPECT_EQ(Query("$MTMDL?"), "$SYVER=1.00") << "now every answer comes one query late";
  EXPECT_THAT(Records(), ElementsAre("$MTSTA? : TimeOut", "$SYVER? : Return Value Mismatch",
                                     "$MTMDL? : Return Value Mismatch"));
}

TEST_F(UdpLink, TakesALateReplyUnderTheSameKeyForTheAnswer) {
  Connect();
  ASSERT_NO_FATAL_FAILURE(QueryAnsweredLate("$MTSTA?", "$MTSTA=late\r\n"));
  EXPECT_EQ(Query("$MTSTA?"), "$MTSTA=late");
  EXPECT_THAT(Records(), ElementsAre("$MTSTA? : TimeOut"));
}

// --- The version probe ---------------------------------------------------------------------------

TEST_F(UdpLink, KnowsAControllerByItsVersionReply) {
  controller.AnswersInTurn(
      "$SYVER?", {"$SYVER=", "$SYVER=1.00", "$SYVE", "$syver=1.00", "1.00", "$SYVER:1.00"});
  Connect();
  EXPECT_EQ(link.CheckUnit(), 1);
  EXPECT_EQ(link.CheckUnit(), 1);
  EXPECT_EQ(link.CheckUnit(), 0) << "shorter than the prefix";
  EXPECT_EQ(link.CheckUnit(), 0) << "small letters";
  EXPECT_EQ(link.CheckUnit(), 0);
  EXPECT_EQ(link.CheckUnit(), 0);
  EXPECT_EQ(controller.CountOf("$SYVER?"), 6);
}

TEST_F(UdpLink, KnowsNoControllerInSilenceOrWhileClosed) {
  EXPECT_EQ(link.CheckUnit(), 0);
  EXPECT_THAT(controller.Commands(), IsEmpty());
  Connect();
  patience.End();
  EXPECT_EQ(link.CheckUnit(), 0);
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : TimeOut"));
}

}  // namespace
