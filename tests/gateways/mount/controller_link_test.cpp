// SPDX-License-Identifier: MIT
#include "gateways/mount/controller_link.h"

#include <gmock/gmock.h>

#include <set>

#include "simulator/scripted_controller.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using simulator::FromElsewhere;
using simulator::Raw;
using simulator::ScriptedController;
using velquin::Answer;
using velquin::ControllerLink;
using velquin::Exchanged;
using velquin::ExchangeJournal;

class ControllerLinkTest : public testing::Test {
 protected:
  ControllerLinkTest() {
    link.SetPeer(platform::AddressFromText(controller.Address().c_str()),
                 ScriptedController::kPort);
  }
  /// The reasons in the journal, one a line, without their times.
  std::string Journal() {
    const TempFolder folder;
    journal.Write(folder.Narrow() + "/", "x");
    for (const auto& entry : std::filesystem::directory_iterator(folder.Narrow())) {
      std::string lines;
      std::string text = ReadWholeFile(entry.path()).value_or("");
      for (size_t end = text.find('\n'); end != text.npos; end = text.find('\n')) {
        lines += text.substr(9, end - 8);
        text.erase(0, end + 1);
      }
      return lines;
    }
    return "";
  }

  ScriptedController controller;
  ExchangeJournal journal;
  ControllerLink link{journal};
};

TEST_F(ControllerLinkTest, GivesTheAnswer) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  const Answer answer = link.Exchange("$SYVER?");
  EXPECT_EQ(answer.how, Exchanged::kAnswered);
  EXPECT_EQ(answer.line, "$SYVER=1.00");
  EXPECT_EQ(controller.Received()[0].bytes, "$SYVER?\r\n");
  EXPECT_EQ(journal.Count(), 0u);
}

TEST_F(ControllerLinkTest, WaitsHalfASecondForAnAnswer) {
  const Answer answer = link.Exchange("$SYVER?");
  EXPECT_EQ(answer.how, Exchanged::kSilent);
  EXPECT_GE(answer.endedAt - answer.sentAt, 500ms);
  EXPECT_EQ(Journal(), "$SYVER? : TimeOut\n");
}

TEST_F(ControllerLinkTest, TakesEveryExchangeThroughAPortOfItsOwn) {
  controller.Answers("$MTSTA?", "$MTSTA=1");
  for (int i = 0; i < 64; ++i) link.Exchange("$MTSTA?");
  std::set<uint16_t> ports;
  for (const auto& datagram : controller.Received()) ports.insert(datagram.fromPort);
  EXPECT_EQ(ports.size(), 64u);
}

// The first answer comes while the second exchange waits for its own, under the same key.
TEST_F(ControllerLinkTest, NeverTakesALateAnswerForAnotherCommand) {
  controller.AnswersOnce("$MTSTA?", simulator::Late("$MTSTA=first", 700));
  controller.AnswersOnce("$MTSTA?", simulator::Late("$MTSTA=second", 400));
  EXPECT_EQ(link.Exchange("$MTSTA?").how, Exchanged::kSilent);
  EXPECT_EQ(link.Exchange("$MTSTA?").line, "$MTSTA=second");
}

TEST_F(ControllerLinkTest, NeverTakesASecondCopyForAnotherCommand) {
  controller.AnswersOnce("$MTSTA?",
                         simulator::Datagrams({"$MTSTA=1\r\n", "$MTSTA=1\r\n", "$MTSTA=1\r\n"}));
  controller.AnswersOnce("$MTSTA?", simulator::Late("$MTSTA=2", 50));
  EXPECT_EQ(link.Exchange("$MTSTA?").line, "$MTSTA=1");
  EXPECT_EQ(link.Exchange("$MTSTA?").line, "$MTSTA=2");
}

TEST_F(ControllerLinkTest, LeavesOutWhatOthersSend) {
  controller.AnswersOnce("$SYVER?", FromElsewhere("$SYVER=forged"));
  EXPECT_EQ(link.Exchange("$SYVER?").how, Exchanged::kSilent);
  controller.SetFaults([](int, std::string_view) { return simulator::Fault{.foreign = true}; });
  controller.Answers("$SYVER?", "$SYVER=true");
  EXPECT_EQ(link.Exchange("$SYVER?").line, "$SYVER=true");
}

TEST_F(ControllerLinkTest, SaysWhatIsWrongWithAnAnswer) {
  controller.AnswersOnce("$MTSTP=1", "$MTSTA=1");
  controller.AnswersOnce("$MTSTP=1", "$MTSTP:1");
  controller.AnswersOnce("$MTSTP=1", "hello");
  controller.AnswersOnce("$MTSTP=1", Raw("$MTSTP=1"));
  controller.AnswersOnce("$MTSTP=1", simulator::EmptyDatagram());
  EXPECT_EQ(link.Exchange("$MTSTP=1").how, Exchanged::kMismatch);
  EXPECT_EQ(link.Exchange("$MTSTP=1").how, Exchanged::kMismatch);
  EXPECT_EQ(link.Exchange("$MTSTP=1").how, Exchanged::kMismatch);
  EXPECT_EQ(link.Exchange("$MTSTP=1").how, Exchanged::kUnusable);
  EXPECT_EQ(link.Exchange("$MTSTP=1").how, Exchanged::kUnusable);
  EXPECT_EQ(Journal(),
            "$MTSTP=1 : Return Value Mismatch\n$MTSTP=1 : Return Value Mismatch\n"
            "$MTSTP=1 : Return Value Mismatch\n$MTSTP=1 : Can't Receve\n"
            "$MTSTP=1 : Socket Close\n");
}

TEST_F(ControllerLinkTest, TakesAKeyInSmallLettersAndASecondKey) {
  controller.Answers("$MTSTP=1", "$mtstp=1");
  controller.Answers("$MTCOM=", "$MTGTS=1");
  EXPECT_EQ(link.Exchange("$MTSTP=1").how, Exchanged::kAnswered);
  EXPECT_EQ(link.Exchange("$MTCOM=0,3").how, Exchanged::kMismatch);
  EXPECT_EQ(link.Exchange("$MTCOM=0,3", {}, "$MTGTS").how, Exchanged::kAnswered);
}

TEST_F(ControllerLinkTest, GivesUpWhenTheTimeHasComeOrItIsInterrupted) {
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(link.Exchange("$MTSTA?", {begin + 50ms, nullptr}).how, Exchanged::kAbandoned);
  const std::atomic<bool> interrupted = true;
  EXPECT_EQ(link.Exchange("$MTSTA?", {begin + 1h, &interrupted}).how, Exchanged::kAbandoned);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 450ms);
  EXPECT_EQ(journal.Count(), 0u);
}

}  // namespace
