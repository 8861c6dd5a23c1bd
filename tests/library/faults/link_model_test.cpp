// SPDX-License-Identifier: MIT
// The model by hand, and against the link itself on networks of every badness.
#include "tests/library/faults/link_model.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "core/net/udp_link.h"
#include "simulator/fault_dice.h"
#include "simulator/scripted_controller.h"
#include "tests/core/net/record_texts.h"

static void PrintTo(const JournalEntry& entry, std::ostream* stream) {
  *stream << entry.command << " : " << entry.reason;
}

namespace {

using simulator::WireDatagram;
using simulator::WireDirection;
using testing::ElementsAre;
using testing::IsEmpty;

class Model : public testing::Test {
 protected:
  void In(double timeMs, const std::string& line) {
    log.push_back({timeMs, 1, WireDirection::kIn, peer, {}, line + "\r\n"});
  }
  void Out(double timeMs, const std::string& bytes) {
    log.push_back({timeMs, 1, WireDirection::kOut, peer, {}, bytes});
  }
  LinkHistory Made() const { return WhatTheLinkMade(log); }
  std::vector<std::string> Replies() const {
    std::vector<std::string> replies;
    const LinkHistory made = Made();
    for (const ModelExchange& exchange : made.exchanges) replies.push_back(exchange.reply);
    return replies;
  }

  std::string peer = "127.0.0.1:1";
  std::vector<WireDatagram> log;
};

TEST_F(Model, TakesOneDatagramAnExchangeTheOldestFirst) {
  In(0, "$A?");
  Out(1, "$A=1\r\n");
  Out(2, "$A=2\r\n");
  In(3, "$B?");
  Out(4, "$B=1\r\n");
  In(5, "$B?");
  EXPECT_THAT(Replies(), ElementsAre("$A=1", "$A=2", "$B=1"));
  EXPECT_THAT(Made().failures, ElementsAre(JournalEntry{"$B?", "Return Value Mismatch"}));
}

TEST_F(Model, WaitsForHalfASecond) {
  In(0, "$A?");
  Out(600, "$A=1\r\n");
  In(650, "$A?");
  In(660, "$A?");
  Out(1100, "$A=2\r\n");
  EXPECT_THAT(Replies(), ElementsAre("", "$A=1", "$A=2"));
  EXPECT_THAT(Made().failures, ElementsAre(JournalEntry{"$A?", "TimeOut"}));
  EXPECT_DOUBLE_EQ(Made().exchanges[0].endMs, 500.0);
  EXPECT_DOUBLE_EQ(Made().exchanges[1].endMs, 650.0);
  EXPECT_DOUBLE_EQ(Made().exchanges[2].endMs, 1100.0);
  EXPECT_DOUBLE_EQ(Made().narrowMs, 60.0);
}

TEST_F(Model, LetsTheJournalTellWhatBecameOfADatagramAtTheEndOfThePatience) {
  In(0, "$A?");
  Out(490, "$A=1\r\n");
  In(510, "$B?");
  Out(512, "$B=1\r\n");
  const auto replies = [this](const std::vector<JournalEntry>& journal, double unclearMs) {
    std::vector<std::string> lines;
    for (const ModelExchange& exchange : HistoryOfJournal(log, unclearMs, journal).exchanges) {
      lines.push_back(exchange.reply);
    }
    return lines;
  };
  const JournalEntry timeOut = {"$A?", "TimeOut"};
  const JournalEntry slow = {"$A?", "TimeOut(1000)"};
  const JournalEntry mismatch = {"$B?", "Return Value Mismatch"};
  EXPECT_THAT(replies({}, 20), ElementsAre("$A=1", "$B=1"));
  EXPECT_THAT(replies({slow}, 20), ElementsAre("$A=1", "$B=1"));
  EXPECT_THAT(replies({timeOut, mismatch}, 20), ElementsAre("", "$A=1"));
  EXPECT_EQ(HistoryOfJournal(log, 20, {slow}).failures, std::vector{slow});
  EXPECT_THAT(HistoryOfJournal(log, 20, {timeOut}).failures, IsEmpty()) << "and no mismatch";
  EXPECT_THAT(HistoryOfJournal(log, 10, {timeOut, mismatch}).failures, IsEmpty()) << "it is clear";
}

TEST_F(Model, KeepsBytesWithoutLineEndAndClosesAtAnEmptyDatagram) {
  In(0, "$A?");
  Out(1, "$A=");
  In(2, "$A?");
  Out(3, "1\r\n");
  In(4, "$A?");
  Out(5, "");
  EXPECT_THAT(Replies(), ElementsAre("", "$A=1", ""));
  EXPECT_THAT(Made().failures, ElementsAre(JournalEntry{"$A?", "Can't Receve"},
                                           JournalEntry{"$A?", "Socket Close"}));
  EXPECT_TRUE(Made().closed);
  peer = "127.0.0.1:2";
  In(6, "$A?");
  Out(7, "$A=2\r\n");
  EXPECT_FALSE(Made().closed);
}

TEST_F(Model, KnowsWhatPollsPublish) {
  In(0, "$MTSTA?");
  Out(1, "$MTSTA=60000.5,1,0,0,0,45.0,10,20,6.0,22.5,4\r\n");
  In(2, "$MTSTA?");
  Out(3, "$mtsta=1,2\r\n");
  In(4, "$MTSTA?");
  Out(5, "$SYVER=1\r\n");
  In(6, "$SYVER?");
  Out(7, "$MTSTA=60000.5,1,0,0,0,45.0,10,20,7.0,22.5,4\r\n");
  EXPECT_THAT(PolledPositions(Made()), ElementsAre(SkyPosition{90.0, 22.5}, SkyPosition{0.0, 0.0}));
}

/// A link that talks to a controller over a bad network, and what the model makes of that.
class ModelAndLink : public testing::TestWithParam<int> {};

TEST_P(ModelAndLink, AgreeOnEveryReplyAndEveryFailure) {
  simulator::ScriptedController controller;
  controller.StartWireLog();
  controller.Answers("$ASK1?", "$ASK1=1");
  controller.Answers("$ASK2?", "$ASK2=2");
  simulator::FaultOptions faults;
  faults.loss = simulator::kAlways / 50;  // each costs half a second
  faults.duplicate = faults.reorder = faults.truncate = faults.garble = faults.foreign =
      faults.split = simulator::kAlways / 8;
  faults.empty = simulator::kAlways / 100;
  faults.longestDelayMs = 10;
  faults.seed = static_cast<uint64_t>(GetParam());
  controller.SetFaults([dice = simulator::FaultDice(faults)](int exchange, std::string_view) {
    simulator::Fault fault = dice(exchange);
    fault.garbleBits &= 0x7f;  // what counts as a letter beyond that depends on the code page
    return fault;
  });
  CUdpLink link;
  std::vector<std::string> replies;
  ptrdiff_t sessions = 0;
  for (int i = 0; i < 80; ++i) {
    sessions += link.Open(controller.Address().c_str(), simulator::ScriptedController::kPort);
    const CString reply = link.Query(i % 3 == 0 ? "$ASK1?" : "$ASK2?");
    replies.emplace_back(reply.GetString(), static_cast<size_t>(reply.GetLength()));
  }
  // The last command may still be on its way into the log when a datagram lay there for it.
  ASSERT_TRUE(controller.WaitForCount("$ASK1?", 27, 5000));
  ASSERT_TRUE(controller.WaitForCount("$ASK2?", 53, 5000));
  const LinkHistory history = WhatTheLinkMade(controller.WireLog());
  std::vector<std::string> modelReplies;
  for (const ModelExchange& exchange : history.exchanges) modelReplies.push_back(exchange.reply);
  EXPECT_EQ(replies, modelReplies);
  std::vector<JournalEntry> failures;
  for (const TimeOutErrorW& error : RecordsOf(link)) {
    failures.push_back({error.strCommand.GetString(), error.strError.GetString()});
  }
  // Slow exchanges depend on the machine, and 10 ms are none.
  EXPECT_EQ(failures, history.failures);
  EXPECT_GT(failures.size(), 10u);
  // Open opens at first and after each close, but for one by the last exchange.
  const ptrdiff_t closes =
      std::count_if(failures.begin(), failures.end(),
                    [](const JournalEntry& failure) { return failure.reason == "Socket Close"; });
  EXPECT_EQ(sessions, 1 + closes - (history.closed ? 1 : 0));
}

INSTANTIATE_TEST_SUITE_P(Seeds, ModelAndLink, testing::Range(1, 5));

}  // namespace
