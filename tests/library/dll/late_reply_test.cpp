// SPDX-License-Identifier: MIT
// What one late reply costs: replies carry no number, so it is taken for the answer to the next
// query of its kind, and so on until the session is begun anew.
#include <algorithm>

#include "tests/library/dll/driver_fixture.h"
#include "tests/support/file_text.h"

namespace {

using namespace std::chrono_literals;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;

class LateReply : public DriverTest {
 protected:
  static constexpr int kLateMs = 650;  // the driver waits for 500
  static constexpr int kLatePoll = 8;

  /// The mount tells in its declination which status query it answers, counted from 1.
  static simulator::ScriptedReply AnswerTo(int poll) {
    return "$MTSTA=60000.5,1,0,0,0,45.0,10,20,6.0," + std::to_string(poll) + ",4";
  }
  void OneReplyComesLate() { AnswerPolls(kLatePoll); }
  /// @param latePoll 0 for none
  void AnswerPolls(int latePoll) {
    std::vector<simulator::ScriptedReply> replies;
    for (int poll = 1; poll <= 600; ++poll) {
      replies.push_back(poll == latePoll ? Late(AnswerTo(poll), kLateMs) : AnswerTo(poll));
    }
    controller.AnswersInTurn("$MTSTA?", replies);
  }
  /// From its next command on the controller is busy for a while, and then answers all that it was
  /// asked meanwhile, in the same order.
  void ControllerIsBusy(std::chrono::milliseconds duration) {
    std::chrono::steady_clock::time_point end;
    controller.SetFaults([end, duration](int exchange, std::string_view) mutable {
      const auto now = std::chrono::steady_clock::now();
      if (exchange == 1) end = now + duration;
      simulator::Fault fault;
      if (now < end) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - now);
        fault.delayMs = static_cast<int>(left.count()) + 2 * exchange;  // in order
      }
      return fault;
    });
  }
  /// What happens to the next exchange.
  void Once(const simulator::Fault& fault) {
    controller.SetFaults([fault](int exchange, std::string_view) {
      return exchange == 1 ? fault : simulator::Fault();
    });
  }
  /// Waits until so many more status queries were sent.
  void PollsPass(int count) {
    const int asked = controller.CountOf("$MTSTA?");
    EXPECT_TRUE(controller.WaitForCount("$MTSTA?", asked + count, kSoonMs));
  }
  int TimeOutLines() {
    const std::vector<std::string> lines = JournalLines();
    return static_cast<int>(std::count_if(lines.begin(), lines.end(), [](const auto& line) {
      return line.ends_with(" $MTSTA? : TimeOut");
    }));
  }
  /// @return by how many queries the position is behind in the middle between two of them: the one
  /// in the middle of so many looks, since on a busy machine a look may come at a bad moment.
  int QueriesBehind(int looks) {
    std::vector<int> behind;
    for (int i = 0; i < looks; ++i) {
      EXPECT_TRUE(controller.WaitForCount("$MTSTA?", controller.CountOf("$MTSTA?") + 1, kSoonMs));
      const int asked = controller.CountOf("$MTSTA?");
      Sleep(50);
      double radec[2];
      driver.GetPos(nullptr, radec);
      behind.push_back(asked - static_cast<int>(radec[1]));
    }
    std::sort(behind.begin(), behind.end());
    return behind[behind.size() / 2];
  }
  std::vector<std::string> JournalLines() {
    std::vector<std::string> lines;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      std::string text = ReadWholeFile(entry.path()).value_or("");
      for (size_t end; (end = text.find("\r\n")) != std::string::npos; text.erase(0, end + 2)) {
        lines.push_back(text.substr(0, end));
      }
    }
    return lines;
  }
  void BecomesShifted() {
    OneReplyComesLate();
    ASSERT_EQ(Start(), 1);
    ASSERT_TRUE(controller.WaitForCount("$MTSTA?", kLatePoll + 2, kSoonMs));
  }
};

TEST_F(LateReply, PutsThePositionOneQueryBehindForTheRestOfTheSession) {
  OneReplyComesLate();
  ASSERT_EQ(Start(), 1);
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 2, kSoonMs));
  EXPECT_EQ(QueriesBehind(3), 0);
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", kLatePoll + 2, kSoonMs));
  EXPECT_EQ(QueriesBehind(9), 1);
  EXPECT_EQ(QueriesBehind(9), 1) << "nothing puts it right";

  EXPECT_EQ(driver.End(nullptr), 1);
  // The keys agree: the journal tells of the one query that got no answer in time, and no more.
  EXPECT_THAT(JournalLines(), ElementsAre(EndsWith(" $MTSTA? : TimeOut")));
  ASSERT_EQ(Start(), 1);
  const int asked = controller.CountOf("$MTSTA?");
  ASSERT_TRUE(controller.WaitForCount("$MTSTA?", asked + 2, kSoonMs));
  EXPECT_EQ(QueriesBehind(5), 0) << "a new session helps";
}

TEST_F(LateReply, HidesThatATargetIsBelowTheHorizon) {
  const double target[2] = {83.633, 22.0145};
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  ASSERT_NO_FATAL_FAILURE(BecomesShifted());
  driver.Look(nullptr, target);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  EXPECT_TRUE(PollsAgain()) << "a box would keep the worker from it";
  EXPECT_FALSE(FindMessageBox());
  EXPECT_EQ(driver.End(nullptr), 1);
  EXPECT_THAT(JournalLines(),
              Contains(AllOf(testing::HasSubstr(" $MTTGT="), EndsWith("Return Value Mismatch"))));

  ASSERT_EQ(Start(), 1);
  driver.Look(nullptr, target);
  const auto box = WaitForMessageBox(kSoon);
  ASSERT_TRUE(box) << "a new session helps";
  EXPECT_TRUE(PressOk(*box));
}

// A query must be answered in vain once more for that: one that finds an older reply waiting needs
// no other.
TEST_F(LateReply, ShiftsByOneMoreWithEachTimeOutAndByOneLessWithEachLostReply) {
  AnswerPolls(0);
  ASSERT_EQ(Start(), 1);
  PollsPass(2);
  ControllerIsBusy(800ms);  // the query at its beginning times out, the next one is sent at 600 ms
  PollsPass(3);
  EXPECT_EQ(QueriesBehind(5), 1);
  ControllerIsBusy(900ms);  // the second query, at 100 ms, times out, the third is sent at 700 ms
  PollsPass(4);
  EXPECT_EQ(QueriesBehind(5), 2);

  simulator::Fault loss;
  loss.losesReply = true;
  Once(loss);
  PollsPass(2);
  EXPECT_EQ(QueriesBehind(5), 1);
  Once(loss);
  PollsPass(2);
  EXPECT_EQ(QueriesBehind(5), 0) << "healed";
  EXPECT_EQ(driver.End(nullptr), 1);
  EXPECT_EQ(TimeOutLines(), 2) << "a lost reply leaves no line while an older one waits";
}

TEST_F(LateReply, NeedNotBeLateWhenItComesTwice) {
  AnswerPolls(0);
  ASSERT_EQ(Start(), 1);
  PollsPass(2);
  simulator::Fault twice;
  twice.duplicates = true;
  Once(twice);
  PollsPass(2);
  EXPECT_EQ(QueriesBehind(5), 1);
  EXPECT_EQ(QueriesBehind(5), 1) << "nothing puts it right";
  EXPECT_EQ(driver.End(nullptr), 1);
  EXPECT_THAT(JournalLines(), testing::IsEmpty()) << "nothing tells of it";
}

}  // namespace
