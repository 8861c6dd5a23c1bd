// SPDX-License-Identifier: MIT
// What happens to bytes that are no whole line, or more than one.
#include <string>

#include "tests/core/net/udp_link_fixture.h"

namespace {

using simulator::Datagrams;
using simulator::Raw;
using simulator::Silence;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kFirstCapacity = 4096;
constexpr int kGrowth = 2048;

using UdpLinkBuffer = UdpLink;

std::string Filler(int count) {
  return std::string(static_cast<size_t>(count), 'x');
}

TEST_F(UdpLinkBuffer, KeepsBytesWithoutLineEndForTheNextReply) {
  controller.AnswersInTurn("$SYVER?", {Raw("$SYV"), Raw("ER=1.00\r\n")});
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Can't Receve"));
  EXPECT_EQ(probe.Unread(), "$SYV");
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Can't Receve"));
  EXPECT_EQ(probe.BytesHeld(), 0);
}

TEST_F(UdpLinkBuffer, PutsAFragmentBeforeWhateverComesNext) {
  controller.Answers("$SYVER?", Raw("$SYVER=1"));
  controller.Answers("$MTSTA?", "$MTSTA=0");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "");
  EXPECT_EQ(Query("$MTSTA?"), "$SYVER=1$MTSTA=0");
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : Can't Receve", "$MTSTA? : Return Value Mismatch"));
}

TEST_F(UdpLinkBuffer, AnswersTheNextQueryWithTheSecondLine) {
  controller.Answers("$SYVER?", Raw("$SYVER=1.00\r\n$MTSTA=early\r\n"));
  controller.Answers("$MTSTA?", "$MTSTA=fresh");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1.00");
  EXPECT_EQ(probe.Unread(), "$MTSTA=early\r\n");
  EXPECT_EQ(Query("$MTSTA?"), "$MTSTA=early");
  EXPECT_EQ(probe.Unread(), "$MTSTA=fresh\r\n");
  EXPECT_THAT(Records(), IsEmpty());
}

// The buffer is only looked at after something has come.
TEST_F(UdpLinkBuffer, DoesNotAnswerFromTheBufferInSilence) {
  controller.Answers("a", Raw("one\r\ntwo\r\n"));
  Connect();
  ASSERT_EQ(Query("a"), "one");
  patience.End();
  EXPECT_EQ(Query("b"), "");
  EXPECT_THAT(Records(), ElementsAre("b : TimeOut"));
  EXPECT_EQ(probe.Unread(), "two\r\n");
}

TEST_F(UdpLinkBuffer, ReadsOneDatagramAnExchange) {
  controller.Answers("a", Datagrams({"one\r\n", "two\r\n"}));
  controller.Answers("b", "three");
  Connect();
  EXPECT_EQ(Query("a"), "one");
  EXPECT_EQ(probe.BytesHeld(), 0);
  EXPECT_EQ(Query("b"), "two");
}

TEST_F(UdpLinkBuffer, JoinsALineEndThatComesInTwoDatagrams) {
  controller.Answers("a", Raw("one\r"));
  controller.Answers("b", Raw("\ntwo"));
  controller.Answers("c", Raw("\r\n"));
  Connect();
  EXPECT_EQ(Query("a"), "");
  EXPECT_EQ(Query("b"), "one");
  EXPECT_EQ(Query("c"), "two");
}

TEST_F(UdpLinkBuffer, TakesOnlyBothCharactersForALineEnd) {
  controller.Answers("a", Raw("one\ntwo\rthree\r\r\nfour\r\n"));
  controller.Answers("b", Raw("\n\r"));
  Connect();
  EXPECT_EQ(Query("a"), "one\ntwo\rthree\r");
  EXPECT_EQ(Query("b"), "four");
  EXPECT_EQ(probe.Unread(), "\n\r");
}

TEST_F(UdpLinkBuffer, ReturnsAnEmptyLineAsAnEmptyReply) {
  controller.Answers("a", Raw("\r\n"));
  Connect();
  EXPECT_EQ(Query("a"), "");
  EXPECT_THAT(Records(), IsEmpty()) << "both keys are empty";
  EXPECT_EQ(probe.BytesHeld(), 0);
}

TEST_F(UdpLinkBuffer, EndsWithANulWhateverIsHeld) {
  controller.AnswersInTurn("a", {Raw("one two three\r\nrest\r\n"), Raw("x"), Raw("\r\n")});
  Connect();
  for (int exchange = 0; exchange < 3; ++exchange) {
    Query("a");
    EXPECT_EQ(probe.Buffer()[probe.BytesHeld()], '\0');
    EXPECT_LT(probe.BytesHeld(), probe.Capacity());
  }
}

// --- NUL among the bytes -------------------------------------------------------------------------

TEST_F(UdpLinkBuffer, EndsTheTextOfALineAtANul) {
  controller.Answers("$SYVER?", Raw(std::string("$SYVER=1\0hidden\r\n", 17)));
  controller.Answers("$MTSTA?", "$MTSTA=0");
  Connect();
  EXPECT_EQ(Query("$SYVER?"), "$SYVER=1");
  EXPECT_EQ(probe.BytesHeld(), 0) << "the whole line is used up";
  EXPECT_EQ(Query("$MTSTA?"), "$MTSTA=0");
  EXPECT_THAT(Records(), IsEmpty());
}

TEST_F(UdpLinkBuffer, IsNotJammedByANul) {
  controller.Answers("a", Raw(std::string("\0\0", 2)));
  controller.Answers("b", "b");
  Connect();
  EXPECT_EQ(Query("a"), "");
  EXPECT_EQ(Query("b"), "") << "the NUL stands before the line";
  EXPECT_EQ(Query("b"), "b");
  EXPECT_EQ(Query("b"), "b");
  EXPECT_THAT(Records(), ElementsAre("a : Can't Receve"));
}

TEST_F(UdpLinkBuffer, FindsALineEndBehindANul) {
  controller.Answers("a", Raw(std::string("one\0\r\ntwo\r\n", 11)));
  controller.Answers("b", "three");
  Connect();
  EXPECT_EQ(Query("a"), "one");
  EXPECT_EQ(Query("b"), "two");
  EXPECT_EQ(probe.Unread(), "three\r\n");
}

// --- Room ----------------------------------------------------------------------------------------

TEST_F(UdpLinkBuffer, GrowsWhenLittleRoomIsLeft) {
  const int half = kFirstCapacity - kGrowth;
  controller.AnswersInTurn("a", {Raw(Filler(half)), Raw("x"), Raw("x"), Raw("\r\n")});
  Connect();
  Query("a");
  Query("a");
  EXPECT_EQ(probe.BytesHeld(), half + 1);
  EXPECT_EQ(probe.Capacity(), kFirstCapacity) << "there was just room enough";
  Query("a");
  EXPECT_EQ(probe.Capacity(), kFirstCapacity + kGrowth);
  EXPECT_EQ(Query("a"), Filler(half + 2));
  EXPECT_EQ(probe.Capacity(), kFirstCapacity + kGrowth) << "it does not shrink";
  link.Close();
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(probe.Capacity(), kFirstCapacity);
}

// A controller that forgets its line ends for a while costs memory, never bytes.
TEST_F(UdpLinkBuffer, CollectsManyDatagramsUntilALineEndComes) {
  constexpr int kDatagrams = 40;
  constexpr int kLength = 1000;
  std::string all;
  std::vector<simulator::ScriptedReply> replies;
  for (int i = 0; i < kDatagrams; ++i) {
    const std::string piece(kLength, static_cast<char>('A' + i % 26));
    all += piece;
    replies.push_back(Raw(piece));
  }
  replies.push_back(Raw("\r\nnext\r\n"));
  controller.AnswersInTurn("a", replies);
  Connect();
  for (int i = 1; i <= kDatagrams; ++i) {
    ASSERT_EQ(Query("a"), "");
    ASSERT_EQ(probe.BytesHeld(), i * kLength);
    ASSERT_GT(probe.Capacity(), probe.BytesHeld());
    ASSERT_EQ((probe.Capacity() - kFirstCapacity) % kGrowth, 0);
  }
  EXPECT_EQ(Query("a"), all);
  EXPECT_EQ(probe.Unread(), "next\r\n");
  EXPECT_EQ(Records().size(), static_cast<size_t>(kDatagrams));
}

TEST_F(UdpLinkBuffer, TakesADatagramThatJustFits) {
  const std::string line = Filler(kFirstCapacity - 3);
  controller.Answers("a", line);
  Connect();
  EXPECT_EQ(Query("a"), line);
  EXPECT_THAT(Records(), IsEmpty());
}

// One byte more than fits: Windows reports an error, other systems cut the datagram.
TEST_F(UdpLinkBuffer, LosesADatagramThatDoesNotFit) {
  controller.Answers("a", Filler(kFirstCapacity - 2));
  controller.Answers("b", "b");
  Connect();
  EXPECT_EQ(Query("a"), "");
#ifdef _WIN32
  EXPECT_THAT(Records(), ElementsAre("a : Socket Close"));
  EXPECT_FALSE(probe.Connected());
#else
  EXPECT_THAT(Records(), ElementsAre("a : Can't Receve"));
  EXPECT_EQ(probe.BytesHeld(), kFirstCapacity - 1);
  EXPECT_EQ(Query("b"), Filler(kFirstCapacity - 2) + "\rb");
#endif
}

TEST_F(UdpLinkBuffer, HasNoMemoryForADatagram) {
  const int half = kFirstCapacity - kGrowth;
  controller.AnswersInTurn("a", {Raw(Filler(half + 1)), "a"});
  Connect();
  ASSERT_EQ(Query("a"), "");
  PlatformFaults::refusedBytes = kFirstCapacity + kGrowth;
  EXPECT_EQ(Query("a"), "");
  PlatformFaults::refusedBytes = 0;
  EXPECT_THAT(Records(), ElementsAre("a : Can't Receve", "a : Socket Close"));
  EXPECT_FALSE(probe.Connected());
  EXPECT_EQ(faults.socketsClosed, 1);
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(Query("a"), "a");
}

TEST_F(UdpLinkBuffer, KeepsItsBytesWhenItCannotGrow) {
  const int half = kFirstCapacity - kGrowth;
  controller.Answers("a", Raw(Filler(half + 1)));
  Connect();
  ASSERT_EQ(Query("a"), "");
  ASSERT_EQ(probe.BytesHeld(), half + 1) << "or the next call would wait for ever";
  PlatformFaults::refusedBytes = kFirstCapacity + kGrowth;
  EXPECT_EQ(probe.ReceiveChunk(), -1);
  EXPECT_EQ(probe.Unread(), Filler(half + 1));
  EXPECT_EQ(probe.Capacity(), kFirstCapacity);
}

}  // namespace
