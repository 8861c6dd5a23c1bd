// SPDX-License-Identifier: MIT
// Silence, slowness and errors of the system, and what the link records of them.
#include <limits>
#include <string>

#include "tests/core/net/udp_link_fixture.h"

namespace {

using simulator::EmptyDatagram;
using simulator::Raw;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

using UdpLinkFailure = UdpLink;

// --- Closed, silent ------------------------------------------------------------------------------

TEST_F(UdpLinkFailure, SaysAndRecordsNothingWhileClosed) {
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), IsEmpty());
  EXPECT_THAT(controller.Commands(), IsEmpty());
}

TEST_F(UdpLinkFailure, RecordsASilence) {
  Connect();
  patience.End();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : TimeOut"));
  EXPECT_TRUE(probe.Connected());
  patience.Restore();
  ASSERT_TRUE(controller.WaitFor("$SYVER?", kDeadlineMs));
  controller.Answers("$SYVER?", "$SYVER=1.00");
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
}

TEST_F(UdpLinkFailure, WaitsForTheTimeOutThatWasSet) {
  platform::WaitTime waited = {};
  faults.wait = [&](platform::SocketHandle, const platform::WaitTime& timeOut) {
    waited = timeOut;
    return platform::ReadWait{0, false};
  };
  Connect(2750);
  Query("$SYVER?");
  EXPECT_EQ(waited.seconds, 2);
  EXPECT_EQ(waited.microseconds, 750000);
}

TEST_F(UdpLinkFailure, GivesUpAfterTheTimeOut) {
  using std::chrono::milliseconds;
  LetTimePass();
  Connect(150);
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, milliseconds(145));
  EXPECT_LT(std::chrono::steady_clock::now() - begin, milliseconds(kDeadlineMs));
}

TEST_F(UdpLinkFailure, RecordsASilenceOnceHoweverLong) {
  EveryExchangeTakes(2000);
  Connect(30);
  Query("$SYVER?");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : TimeOut"));
}

TEST_F(UdpLinkFailure, RecordsWhenAnExchangeBegan) {
  EveryExchangeTakes(700);
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  nowMs = 3723900;
  Query("$SYVER?");
  Query("$SYVER?");
  EXPECT_THAT(Times(), ElementsAre(3723900, 3724600));
}

// --- Slow ----------------------------------------------------------------------------------------

struct Slowness {
  int durationMs;
  const char* record;  ///< null for none
};

class SlowUdpLink : public UdpLink, public testing::WithParamInterface<Slowness> {};

// The number is the seconds plus a thousand.
TEST_P(SlowUdpLink, ReturnsTheReplyAndRecordsTheTime) {
  EveryExchangeTakes(GetParam().durationMs);
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  if (GetParam().record == nullptr) {
    EXPECT_THAT(Records(), IsEmpty());
  } else {
    EXPECT_THAT(Records(), ElementsAre(std::string("$SYVER? : ") + GetParam().record));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Durations, SlowUdpLink,
    testing::Values(Slowness{0, nullptr}, Slowness{499, nullptr}, Slowness{500, nullptr},
                    Slowness{501, "TimeOut(1000)"}, Slowness{600, "TimeOut(1000)"},
                    Slowness{700, "TimeOut(1000)"}, Slowness{999, "TimeOut(1000)"},
                    Slowness{1000, "TimeOut(1001)"}, Slowness{2300, "TimeOut(1002)"},
                    Slowness{9000000, "TimeOut(10000)"}),
    [](const auto& test) { return std::to_string(test.param.durationMs) + "ms"; });

// As a process's clock may, which wraps after 25 days or is set by the system.
TEST_F(UdpLinkFailure, RecordsNoSlownessWhenTheClockGoesBack) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  for (const int durationMs : {-1, -501, -1000000}) {
    EveryExchangeTakes(durationMs);
    EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  }
  EXPECT_THAT(Records(), IsEmpty());
}

TEST_F(UdpLinkFailure, MeasuresAnExchangeDuringWhichTheClockWraps) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  SetTheClock();
  faults.wait = [this](platform::SocketHandle socket, const platform::WaitTime& timeOut) {
    nowMs = std::numeric_limits<int32_t>::min() + 599;
    return platform::WaitReadable(socket, timeOut);
  };
  nowMs = std::numeric_limits<int32_t>::max();
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : TimeOut(1000)"));
}

TEST_F(UdpLinkFailure, LetsASlowAnswerThroughWhenTheTimeOutAllows) {
  controller.AnswersLate("$SYVER?", "$SYVER=1.00", 600);
  LetTimePass();
  Connect(3000);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  EXPECT_THAT(Records(), ElementsAre(StartsWith("$SYVER? : TimeOut(100")));
}

TEST_F(UdpLinkFailure, RecordsASlowWrongReplyTwice) {
  EveryExchangeTakes(600);
  controller.Answers("$SYVER?", "$MTSTA=0");
  controller.Answers("$MTSTA?", Raw("no line end"));
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$MTSTA=0");
  EXPECT_EQ(Query("$MTSTA?"), "");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Return Value Mismatch", "$SYVER? : TimeOut(1000)",
                                     "$MTSTA? : Can't Receve", "$MTSTA? : TimeOut(1000)"));
}

// --- The wait ------------------------------------------------------------------------------------

TEST_F(UdpLinkFailure, RecordsAReadySocketThatIsNotMarked) {
  Connect();
  for (const int result : {1, -1}) {
    faults.wait = [&](platform::SocketHandle, const platform::WaitTime&) {
      return platform::ReadWait{result, false};
    };
    EXPECT_EQ(Query("$SYVER?"), "");
  }
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : FD_ISSET", "$SYVER? : FD_ISSET"));
  EXPECT_TRUE(probe.Connected());
}

TEST_F(UdpLinkFailure, RecordsASlowUnmarkedSocketTwiceWithOneTime) {
  SetTheClock();
  faults.wait = [this](platform::SocketHandle, const platform::WaitTime&) {
    nowMs += 600;
    return platform::ReadWait{1, false};
  };
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : FD_ISSET", "$SYVER? : TimeOut(1000)"));
  EXPECT_THAT(Times(), ElementsAre(1000, 1000));
}

// A socket that somebody in the process closes while the link waits makes the system's wait fail.
// Nothing is received then, which on a socket that still works could block for ever.
TEST_F(UdpLinkFailure, RecordsAWaitThatTheSystemRefuses) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  // Not the link's own one, which the link closes again: by then its number may be somebody else's.
  faults.wait = [](platform::SocketHandle, const platform::WaitTime& timeOut) {
    const platform::SocketHandle closed = platform::OpenDatagramSocket();
    platform::CloseSocket(closed);
    return platform::WaitReadable(closed, timeOut);
  };
  int received = 0;
  faults.receive = [&](platform::SocketHandle, char*, int) {
    ++received;
    return platform::kSocketError;
  };
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : FD_ISSET"));
  EXPECT_EQ(received, 0);
  EXPECT_TRUE(probe.Connected());

  faults.wait = nullptr;
  faults.receive = nullptr;
  link.Close();
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00") << "the next connection is well";
}

// --- The receive ---------------------------------------------------------------------------------

TEST_F(UdpLinkFailure, ClosesAtAnEmptyDatagramUntilTheNextOpen) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  controller.AnswersOnce("$SYVER?", EmptyDatagram());
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Socket Close"));
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(faults.socketsClosed, 1);
  EXPECT_EQ(link.GetLocalPort(), 65535);
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_EQ(link.CheckUnit(), 0);
  EXPECT_EQ(Records().size(), 1u) << "a closed link records nothing";
  EXPECT_EQ(controller.CountOf("$SYVER?"), 1);
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
}

TEST_F(UdpLinkFailure, ClosesAtAReceiveErrorUntilTheNextOpen) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  faults.receive = [](platform::SocketHandle, char*, int) { return platform::kSocketError; };
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Socket Close"));
  EXPECT_FALSE(probe.Connected());
  faults.receive = nullptr;
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_EQ(Records().size(), 1u);
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
}

TEST_F(UdpLinkFailure, RecordsAReceiveErrorOnceHoweverSlow) {
  EveryExchangeTakes(600);
  controller.Answers("$SYVER?", EmptyDatagram());
  Connect();
  Query("$SYVER?");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Socket Close"));
}

TEST_F(UdpLinkFailure, LeavesRoomForTheNulWhenItReceives) {
  int offered = 0;
  faults.receive = [&](platform::SocketHandle, char* bytes, int capacity) {
    offered = capacity;
    bytes[0] = 'x';
    return 1;
  };
  faults.wait = [](platform::SocketHandle, const platform::WaitTime&) {
    return platform::ReadWait{1, true};
  };
  Connect();
  Query("a");
  EXPECT_EQ(offered, 4095);
  Query("a");
  EXPECT_EQ(offered, 4094);
}

// --- The send ------------------------------------------------------------------------------------

TEST_F(UdpLinkFailure, RecordsNothingWhenItCannotSend) {
  SetTheClock();
  faults.send = [this](platform::SocketHandle, const std::string&, const platform::SocketAddress&) {
    nowMs += 5000;
    return platform::kSocketError;
  };
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), IsEmpty());
  EXPECT_TRUE(probe.Connected());
}

TEST_F(UdpLinkFailure, CannotSendMoreThanADatagramHolds) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  EXPECT_EQ(Query(std::string(70000, 'x')), "");
  EXPECT_THAT(Records(), IsEmpty());
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  EXPECT_EQ(controller.Received().size(), 1u);
}

TEST_F(UdpLinkFailure, SendsTheRestOfAPartlySentLine) {
  std::vector<std::string> sent;
  faults.send = [&](platform::SocketHandle, const std::string& bytes,
                    const platform::SocketAddress& to) {
    sent.push_back(bytes);
    EXPECT_EQ(to.addressNetworkOrder, probe.RemoteAddress());
    return std::min<int>(4, static_cast<int>(bytes.size()));
  };
  Connect();
  patience.End();
  Query("$SYVER?");
  EXPECT_THAT(sent, ElementsAre("$SYVER?\r\n", "ER?\r\n", "\n"));
}

TEST_F(UdpLinkFailure, StopsSendingAtTheFirstError) {
  int calls = 0;
  faults.send = [&](platform::SocketHandle, const std::string&, const platform::SocketAddress&) {
    return ++calls == 1 ? 2 : platform::kSocketError;
  };
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_EQ(calls, 2);
  EXPECT_THAT(Records(), IsEmpty());
}

// --- Opening -------------------------------------------------------------------------------------

TEST_F(UdpLinkFailure, OpensWhenTheSystemDoesNotTellItsPort) {
  faults.boundPort = [](platform::SocketHandle) { return uint16_t{0}; };
  controller.Answers("$SYVER?", "$SYVER=1.00");
  Connect();
  EXPECT_EQ(link.GetLocalPort(), 0);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
}

// A failed open gives nothing back, because closing acts on a connected link only.
TEST_F(UdpLinkFailure, StaysClosedWithoutASocket) {
  faults.openSocket = [] { return platform::kInvalidSocket; };
  EXPECT_EQ(Open(), 0);
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(probe.Socket(), platform::kInvalidSocket);
}

TEST_F(UdpLinkFailure, StaysClosedWithoutALocalPort) {
  faults.bindSocket = [](platform::SocketHandle, const platform::SocketAddress&) { return -1; };
  EXPECT_EQ(Open(), 0);
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(faults.socketsClosed, 0);
  EXPECT_EQ(link.GetLocalPort(), 65535);
  EXPECT_EQ(Query("$SYVER?"), "");
  faults.bindSocket = nullptr;
  controller.Answers("$SYVER?", "$SYVER=1.00");
  EXPECT_EQ(Open(), 1);
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
}

TEST_F(UdpLinkFailure, StaysClosedWithoutMemory) {
  PlatformFaults::refusedBytes = 4096;
  const int opened = Open();
  PlatformFaults::refusedBytes = 0;
  EXPECT_EQ(opened, 0);
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(probe.Buffer(), nullptr);
  EXPECT_EQ(faults.socketsClosed, 0);
}

TEST_F(UdpLinkFailure, RemembersItsLastSocketWhileClosed) {
  Connect();
  const platform::SocketHandle socket = probe.Socket();
  link.Close();
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(probe.Socket(), socket);
  EXPECT_NE(socket, platform::kInvalidSocket);
}

TEST_F(UdpLinkFailure, CanStillChangeItsTimeOutAfterAFailedOpen) {
  faults.lookUpHost = [](const std::string&, uint32_t&) { return false; };
  ASSERT_EQ(link.Open("nowhere", 60023), 0);
  EXPECT_EQ(link.SetTimeOut(1500), 1);
  EXPECT_EQ(probe.RemotePort(), 60023);
}

// --- Records -------------------------------------------------------------------------------------

TEST_F(UdpLinkFailure, KeepsEveryRecordInOrder) {
  controller.Answers("$A=", "$B=1");
  Connect();
  std::vector<std::string> expected;
  for (int i = 0; i < 100; ++i) {
    const std::string command = "$A=" + std::to_string(i);
    Query(command);
    expected.push_back(command + " : Return Value Mismatch");
  }
  EXPECT_EQ(Records(), expected);
}

}  // namespace
