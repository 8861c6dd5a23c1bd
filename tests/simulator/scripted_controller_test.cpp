// SPDX-License-Identifier: MIT
#include "simulator/scripted_controller.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>

#include "tests/simulator/loopback_client.h"

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

constexpr int kDeadlineMs = 5000;

class Scripted : public testing::Test {
 protected:
  ScriptedController controller;
  LoopbackClient host{controller.Address(), ScriptedController::kPort};
};

TEST_F(Scripted, AnswersWithALine) {
  controller.Answers("$SYVER?", "$SYVER=1.00");
  EXPECT_EQ(host.Ask("$SYVER?\r\n"), "$SYVER=1.00\r\n");
  EXPECT_TRUE(host.WasAnsweredByItsServer());
}

TEST_F(Scripted, IsSilentToWhatItDoesNotKnow) {
  host.Send("$SYVER?\r\n");
  EXPECT_TRUE(controller.WaitFor("$SYVER?", kDeadlineMs));
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
}

TEST_F(Scripted, PrefersTheWholeLineToItsKey) {
  controller.Answers("$MTTGT=", "$MTTGT=1");
  controller.Answers("$MTTGT=1,270.000000,0.000000,Home", "$MTTGT=belowhorizon");
  EXPECT_EQ(host.Ask("$MTTGT=3,1.000000,2.000000,\r\n"), "$MTTGT=1\r\n");
  EXPECT_EQ(host.Ask("$MTTGT=1,270.000000,0.000000,Home\r\n"), "$MTTGT=belowhorizon\r\n");
}

TEST_F(Scripted, CanBeSilentToOneLineOfAKey) {
  controller.Answers("$MTSTP=", "$MTSTP=1");
  controller.IsSilentTo("$MTSTP=0");
  host.Send("$MTSTP=0\r\n");
  EXPECT_EQ(host.Ask("$MTSTP=1\r\n"), "$MTSTP=1\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
}

TEST_F(Scripted, SendsBytesAsTheyAre) {
  controller.AnswersRaw("a", "no line end");
  controller.AnswersDatagrams("b", {"$B=1\r\n", "$B=2\r\n"});
  controller.AnswersEmpty("c");
  EXPECT_EQ(host.Ask("a\r\n"), "no line end");
  EXPECT_EQ(host.Ask("b\r\n"), "$B=1\r\n");
  EXPECT_EQ(host.Receive(), "$B=2\r\n");
  EXPECT_EQ(host.Ask("c\r\n"), "");
}

TEST_F(Scripted, AnswersInTurnAndStaysWithTheLast) {
  controller.AnswersInTurn("$MTSTA?", {"$MTSTA=1", Raw("half"), "$MTSTA=3"});
  EXPECT_EQ(host.Ask("$MTSTA?\r\n"), "$MTSTA=1\r\n");
  EXPECT_EQ(host.Ask("$MTSTA?\r\n"), "half");
  EXPECT_EQ(host.Ask("$MTSTA?\r\n"), "$MTSTA=3\r\n");
  EXPECT_EQ(host.Ask("$MTSTA?\r\n"), "$MTSTA=3\r\n");
}

TEST_F(Scripted, AnswersOnceAndThenAsBefore) {
  controller.Answers("$SYVER?", "$SYVER=2");
  controller.AnswersOnce("$SYVER?", "$SYVER=1");
  controller.Answers("$MTSTP=", "$MTSTP=2");
  controller.AnswersOnce("$MTSTP=1", "$MTSTP=1");
  EXPECT_EQ(host.Ask("$SYVER?\r\n"), "$SYVER=1\r\n");
  EXPECT_EQ(host.Ask("$SYVER?\r\n"), "$SYVER=2\r\n");
  EXPECT_EQ(host.Ask("$MTSTP=1\r\n"), "$MTSTP=1\r\n");
  EXPECT_EQ(host.Ask("$MTSTP=1\r\n"), "$MTSTP=2\r\n");
}

TEST_F(Scripted, AnswersOnceAndThenIsSilentWhenThereWasNothingBefore) {
  controller.AnswersOnce("$SYVER?", "$SYVER=1");
  EXPECT_EQ(host.Ask("$SYVER?\r\n"), "$SYVER=1\r\n");
  host.Send("$SYVER?\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
}

TEST_F(Scripted, HoldsALateReplyBackAndAnswersOthersMeanwhile) {
  controller.AnswersLate("slow", "$SLOW=1", 300);
  controller.Answers("quick", "$QUICK=1");
  const auto begin = std::chrono::steady_clock::now();
  host.Send("slow\r\n");
  EXPECT_EQ(host.Ask("quick\r\n"), "$QUICK=1\r\n");
  EXPECT_EQ(host.Receive(), "$SLOW=1\r\n");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(299));
}

TEST_F(Scripted, ReplacesAReplyByALaterOne) {
  controller.AnswersInTurn("a", {"1", "2"});
  controller.AnswersOnce("a", "3");
  controller.Answers("a", "4");
  EXPECT_EQ(host.Ask("a\r\n"), "4\r\n");
}

TEST_F(Scripted, CanAnswerFromElsewhere) {
  controller.AnswersFromElsewhere("$SYVER?", "$SYVER=1");
  EXPECT_EQ(host.Ask("$SYVER?\r\n"), "$SYVER=1\r\n");
  EXPECT_FALSE(host.WasAnsweredByItsServer());
}

TEST_F(Scripted, SpeaksUnasked) {
  EXPECT_FALSE(controller.SendToLastSender("early"));
  host.Send("hello\r\n");
  ASSERT_TRUE(controller.WaitFor("hello", kDeadlineMs));
  EXPECT_TRUE(controller.SendToLastSender("late\r\n"));
  EXPECT_EQ(host.Receive(), "late\r\n");
}

TEST_F(Scripted, KeepsWhatItReceived) {
  LoopbackClient other(controller.Address(), ScriptedController::kPort);
  host.Send("one\r\n");
  ASSERT_TRUE(controller.WaitFor("one", kDeadlineMs));
  other.Send("two");
  ASSERT_TRUE(controller.WaitFor("two", kDeadlineMs));
  EXPECT_THAT(controller.Commands(), ElementsAre("one", "two"));
  const auto received = controller.Received();
  EXPECT_EQ(received[0].bytes, "one\r\n");
  EXPECT_EQ(received[1].bytes, "two");
  EXPECT_EQ(received[0].fromPort, host.Port());
  EXPECT_EQ(received[1].fromPort, other.Port());
  EXPECT_GE(received[0].timeMs, 0.0);
  EXPECT_LE(received[0].timeMs, received[1].timeMs);
  controller.Clear();
  EXPECT_THAT(controller.Commands(), ElementsAre());
}

TEST_F(Scripted, CountsCommandsByLineAndByKey) {
  for (const char* line : {"$MTMV2=1,0,0", "$MTMV2=2,0,0", "$MTMV2=1,0,0", "$MTMV2?"}) {
    host.Send(std::string(line) + "\r\n");
  }
  ASSERT_TRUE(controller.WaitFor("$MTMV2?", kDeadlineMs));
  EXPECT_EQ(controller.CountOf("$MTMV2=1,0,0"), 2);
  EXPECT_EQ(controller.CountOf("$MTMV2="), 3);
  EXPECT_TRUE(controller.Saw("$MTMV2=2,0,0"));
  EXPECT_FALSE(controller.Saw("$MTMV2=3,0,0"));
  EXPECT_TRUE(controller.WaitForCount("$MTMV2=", 3, 0));
  EXPECT_FALSE(controller.WaitForCount("$MTMV2=", 4, 20));
}

TEST_F(Scripted, WaitsUntilACommandComes) {
  std::thread sender([this] { host.Send("now\r\n"); });
  EXPECT_TRUE(controller.WaitFor("now", kDeadlineMs));
  sender.join();
}

TEST_F(Scripted, LooksLikeAMount) {
  controller.LooksLikeAMount();
  EXPECT_EQ(host.Ask("$SYVER?\r\n"), "$SYVER=1.00\r\n");
  EXPECT_EQ(host.Ask("$MTMDL?\r\n"), "$MTMDL=1,2.5,3.0\r\n");
  EXPECT_EQ(host.Ask("$MTSTA?\r\n"), "$MTSTA=60000.5,1,0,0,0,45.0,10,20,6.0,22.5,4\r\n");
  EXPECT_EQ(host.Ask("$SYLOC?\r\n"), "$SYLOC=139.767,35.681,9\r\n");
  EXPECT_EQ(host.Ask("$SYUTM?\r\n"), "$SYUTM=2024,1,2,3,4,5\r\n");
  for (const char* command :
       {"$MTTGT=3,1.000000,2.000000,", "$ALIGN=3,1.000000,2.000000,", "$ALINI=0", "$MTSTP=1",
        "$MTMV2=1.000000,0.000000,0.000000", "$MTAGS=0.500000,0.500000", "$MTCOM=0.000000,3.000000",
        "$MTGTS=1", "$MTINI=1", "$SYLOC= 139.767, 35.681,9", "$SYLTM=2024,01,02,03,04,00.0"}) {
    const std::string line = command;
    EXPECT_EQ(host.Ask(line + "\r\n"), line.substr(0, 7) + "1\r\n");
  }
  controller.Status("60001.0,2,0,0,0,100.0,10,20,6.0,22.5,4");
  EXPECT_THAT(host.Ask("$MTSTA?\r\n"), StartsWith("$MTSTA=60001.0,2,"));
}

TEST(ScriptedControllers, HaveAnAddressEachOrWaitForTheOne) {
  ScriptedController first;
  if (ScriptedController::CanStandBesideOthers()) {
    ScriptedController second;
    EXPECT_NE(first.Address(), second.Address());
  } else {
    EXPECT_THROW(ScriptedController second(50), std::runtime_error);
  }
  EXPECT_THAT(first.Address(), StartsWith("127."));
}

TEST(ScriptedControllers, EachAnswerTheirOwnHost) {
  std::vector<std::thread> tests;
  tests.reserve(4);
  std::atomic<int> answered = 0;
  for (int i = 0; i < 4; ++i) {
    tests.emplace_back([&answered, i] {
      for (int round = 0; round < 5; ++round) {
        ScriptedController controller;
        const std::string name = "test " + std::to_string(i);
        controller.Answers("who?", name);
        LoopbackClient client(controller.Address(), ScriptedController::kPort);
        answered += client.Ask("who?\r\n") == name + "\r\n";
      }
    });
  }
  for (std::thread& test : tests) test.join();
  EXPECT_EQ(answered, 20);
}

TEST_F(Scripted, AnswersSeveralSendersAtOnce) {
  controller.Answers("ask", "answer");
  std::vector<std::thread> senders;
  senders.reserve(4);
  std::atomic<int> answered = 0;
  for (int i = 0; i < 4; ++i) {
    senders.emplace_back([&] {
      LoopbackClient client(controller.Address(), ScriptedController::kPort);
      for (int round = 0; round < 50; ++round) answered += client.Ask("ask\r\n") == "answer\r\n";
    });
  }
  for (std::thread& sender : senders) sender.join();
  EXPECT_EQ(answered, 200);
  EXPECT_EQ(controller.CountOf("ask"), 200);
}

}  // namespace
}  // namespace simulator
