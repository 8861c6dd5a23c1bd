// SPDX-License-Identifier: MIT
// What the link keeps in which state, and what it asks of the system there.
#include <algorithm>
#include <cstdlib>
#include <string>

#include "tests/core/net/udp_link_fixture.h"

namespace {

using simulator::Raw;
using testing::ElementsAre;

using UdpLinkState = UdpLink;

TEST_F(UdpLinkState, HasNoRemoteAddressAtFirst) {
  EXPECT_EQ(probe.RemoteAddress(), 0u);
}

TEST_F(UdpLinkState, AsksForNothingElseWithoutASocket) {
  int bound = 0;
  faults.openSocket = [] { return platform::kInvalidSocket; };
  faults.bindSocket = [&](platform::SocketHandle, const platform::SocketAddress&) {
    return ++bound;
  };
  EXPECT_EQ(link.Open("no-such-host.invalid", simulator::ScriptedController::kPort), 0);
  EXPECT_EQ(Open(), 0);
  EXPECT_EQ(faults.namesLookedUp, 0);
  EXPECT_EQ(bound, 0);
}

// After a close the number of the socket may be that of another one.
TEST_F(UdpLinkState, AsksForNothingOnceClosed) {
  int asked = 0;
  faults.send = [&](platform::SocketHandle, const std::string&, const platform::SocketAddress&) {
    ++asked;
    return platform::kSocketError;
  };
  faults.wait = [&](platform::SocketHandle, const platform::WaitTime&) {
    ++asked;
    return platform::ReadWait{0, false};
  };
  Connect();
  link.Close();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_EQ(link.CheckUnit(), 0);
  EXPECT_EQ(asked, 0);
}

TEST_F(UdpLinkState, HoldsNothingOnceClosed) {
  controller.Answers("a", Raw("one\r\ntwo\r\n"));
  Connect();
  ASSERT_EQ(Query("a"), "one");
  ASSERT_EQ(probe.BytesHeld(), 5);
  link.Close();
  EXPECT_EQ(probe.BytesHeld(), 0);
}

// Memory that was used before holds what was in it.
TEST_F(UdpLinkState, BeginsWithAnEmptyTextInItsBuffer) {
  for (int i = 0; i < 8; ++i) {
    constexpr size_t kBufferSize = 4096;
    auto* const used = static_cast<volatile char*>(std::malloc(kBufferSize));
    ASSERT_NE(used, nullptr);
    std::fill(used, used + kBufferSize, 'x');
    std::free(const_cast<char*>(used));
    ASSERT_EQ(Open(), 1);
    EXPECT_EQ(probe.Buffer()[0], '\0');
    link.Close();
  }
}

TEST_F(UdpLinkState, EndsAShortFragmentWithANulInALongerLinesPlace) {
  controller.AnswersInTurn("a", {Raw("a long line\r\n"), Raw("x")});
  Connect();
  ASSERT_EQ(Query("a"), "a long line");
  ASSERT_EQ(Query("a"), "");
  EXPECT_STREQ(probe.Buffer(), "x");
}

TEST_F(UdpLinkState, TellsHowManyBytesCameInOneDatagram) {
  controller.Answers("a", Raw("one\r\n"));
  Connect();
  ASSERT_EQ(Query("a"), "one");
  ASSERT_TRUE(controller.SendToLastSender("eleven more"));
  EXPECT_EQ(probe.ReceiveChunk(), 11);
  ASSERT_TRUE(controller.SendToLastSender("!"));
  EXPECT_EQ(probe.ReceiveChunk(), 1);
  EXPECT_EQ(probe.Unread(), "eleven more!");
}

// The list of failures is read by the thread that ends a session while the worker adds to it.
TEST_F(UdpLinkState, CopiesItsFailuresInTheirOrder) {
  EveryExchangeTakes(600);
  controller.Answers("$SYVER?", "$SYVER=1.00");
  controller.Answers("$MTSTA?", "$SYVER=1.00");
  Connect();
  Query("$SYVER?");
  Query("$MTSTA?");
  EXPECT_THAT(RecordTexts(link),
              ElementsAre("$SYVER? : TimeOut(1000)", "$MTSTA? : Return Value Mismatch",
                          "$MTSTA? : TimeOut(1000)"));
}

}  // namespace
