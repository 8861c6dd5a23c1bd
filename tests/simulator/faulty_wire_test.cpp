// SPDX-License-Identifier: MIT
// Each fault as a host sees it on the wire, with both controllers; recording and replaying.
#include "simulator/faulty_wire.h"

#include <gmock/gmock.h>

#include <atomic>
#include <chrono>

#include "simulator/fault_dice.h"
#include "simulator/scripted_controller.h"
#include "simulator/simulator.h"
#include "tests/simulator/loopback_client.h"
#include "tests/support/eventually.h"

namespace simulator {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::StartsWith;

FaultChooser Always(const char* fault) {
  return [fault = FaultFromText(fault).value()](int, std::string_view) { return fault; };
}

/// This fault with that exchange only.
FaultChooser Once(int exchange, const char* fault) {
  return ReplayOf({{exchange, FaultFromText(fault).value()}});
}

class FaultyController : public testing::Test {
 protected:
  FaultyController() {
    for (const char* name : {"1", "2", "3"}) {
      controller.Answers(std::string("$ASK") + name + "?", std::string("$ASK=") + name);
    }
  }

  ScriptedController controller;
  LoopbackClient host{controller.Address(), ScriptedController::kPort};
};

TEST_F(FaultyController, LosesRepliesButHears) {
  controller.SetFaults(Once(1, "lose-reply"));
  controller.AnswersInTurn("$ASK1?", {"$ASK=first", "$ASK=second"});
  host.Send("$ASK1?\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK=second\r\n");
}

TEST_F(FaultyController, LosesCommandsBeforeTheyAreHeard) {
  controller.SetFaults(Once(1, "lose-command"));
  controller.AnswersInTurn("$ASK1?", {"$ASK=first", "$ASK=second"});
  host.Send("$ASK1?\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK=first\r\n");
  EXPECT_EQ(controller.CountOf("$ASK1?"), 2) << "what was lost was sent all the same";
}

TEST_F(FaultyController, DelaysReplies) {
  controller.SetFaults(Always("delay=200"));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK=1\r\n");
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::milliseconds(199));
}

TEST_F(FaultyController, CutsAndSplitsAndGarblesReplies) {
  controller.SetFaults(Always("truncate=500"));
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK");
  controller.SetFaults(Always("split=500"));
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK");
  EXPECT_EQ(host.Receive(), "=1\r\n");
  controller.SetFaults(Always("garble=0:1"));
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "%ASK=1\r\n");
  controller.SetFaults(Always("empty"));
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "");
}

TEST_F(FaultyController, SaysThingsTwice) {
  controller.SetFaults(Once(1, "duplicate"));
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK=1\r\n");
  EXPECT_EQ(host.Receive(), "$ASK=1\r\n");
  EXPECT_EQ(host.Ask("$ASK2?\r\n"), "$ASK=2\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
}

TEST_F(FaultyController, LetsAStrangerSpeakFirst) {
  controller.SetFaults(Once(1, "foreign"));
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), kForeignLine);
  EXPECT_FALSE(host.WasAnsweredByItsServer());
  EXPECT_EQ(host.Receive(), "$ASK=1\r\n");
  EXPECT_TRUE(host.WasAnsweredByItsServer());
}

TEST_F(FaultyController, SwapsAReplyWithTheNext) {
  controller.SetFaults(Once(1, "reorder"));
  host.Send("$ASK1?\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
  EXPECT_EQ(host.Ask("$ASK2?\r\n"), "$ASK=2\r\n");
  EXPECT_EQ(host.Receive(), "$ASK=1\r\n");
  EXPECT_EQ(host.Ask("$ASK3?\r\n"), "$ASK=3\r\n");
}

TEST_F(FaultyController, SendsAHeldReplyAlsoWhenTheNextOneIsLost) {
  controller.SetFaults(ReplayOf({{1, {.reorders = true}}, {2, {.losesCommand = true}}}));
  host.Send("$ASK1?\r\n");
  EXPECT_EQ(host.Ask("$ASK2?\r\n"), "$ASK=1\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
}

TEST_F(FaultyController, FallsSilentAndCountsExchangesAnewWithNewFaults) {
  FaultOptions options;
  options.silenceAfter = 1;
  for (int round = 0; round < 2; ++round) {
    controller.SetFaults(FaultDice(options));
    EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK=1\r\n");
    host.Send("$ASK1?\r\n");
    EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
  }
  controller.SetFaults({});
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK=1\r\n");
}

TEST_F(FaultyController, KnowsWhichCommandItSpoils) {
  controller.SetFaults([](int, std::string_view command) {
    return Fault{.losesReply = command.starts_with("$ASK2")};
  });
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), "$ASK=1\r\n");
  host.Send("$ASK2?\r\n");
  EXPECT_EQ(host.Receive(kSilenceMs), "(nothing)");
}

TEST_F(FaultyController, LogsTheWireInOrder) {
  host.Ask("$ASK1?\r\n");
  controller.StartWireLog();
  controller.SetFaults(ReplayOf({{1, {.splitAt = 0, .foreign = true}}, {2, {.losesReply = true}}}));
  EXPECT_EQ(host.Ask("$ASK1?\r\n"), kForeignLine);
  EXPECT_EQ(host.Receive(), "$");
  EXPECT_EQ(host.Receive(), "ASK=1\r\n");
  host.Send("$ASK2?\r\n");
  EXPECT_EQ(host.Ask("$ASK3?\r\n"), "$ASK=3\r\n");
  controller.SendToLastSender("psst");
  std::vector<std::string> lines;
  double lastMs = 0.0;
  for (const WireDatagram& datagram : controller.WireLog()) {
    EXPECT_GE(datagram.timeMs, lastMs);
    lastMs = datagram.timeMs;
    EXPECT_EQ(datagram.peer, "127.0.0.1:" + std::to_string(host.Port()));
    const std::string line = WireRecordLine(datagram);
    const size_t host = line.find("127.0.0.1");
    lines.push_back(line.substr(line.find(' ') + 1, host - line.find(' ') - 1) +
                    line.substr(line.find(' ', host) + 1));
  }
  EXPECT_THAT(
      lines, ElementsAre(R"(1 in foreign,split=0 "$ASK1?\r\n")",
                         R"(1 foreign foreign,split=0 "$OTHER=1\r\n")",
                         R"(1 out foreign,split=0 "$")", R"(1 out foreign,split=0 "ASK=1\r\n")",
                         R"(2 in lose-reply "$ASK2?\r\n")", R"(2 lost lose-reply "$ASK=2\r\n")",
                         R"(3 in - "$ASK3?\r\n")", R"(3 out - "$ASK=3\r\n")", R"(0 out - "psst")"));
}

class FaultySimulator : public testing::Test {
 protected:
  // Time stands still for the mount, so that it says the same in every run.
  static std::vector<std::string> Run(const FaultChooser& faults) {
    std::vector<std::string> lines;
    std::atomic<bool> isDone = false;
    SimulatorOptions options;
    options.port = 0;
    options.faults = faults;
    options.recorder = [&lines, &isDone](WireDatagram datagram) {
      // When one more command comes in, everything before it is on the wire.
      isDone = isDone || datagram.exchange > kExchanges;
      if (isDone) return;
      datagram.timeMs = 0.0;
      datagram.peer = "host";
      lines.push_back(WireRecordLine(datagram));
    };
    Simulator simulated(options, {}, [] { return 0.0; });
    EXPECT_TRUE(simulated.Start());
    LoopbackClient host(options.address, simulated.Port());
    for (int i = 0; i <= kExchanges; ++i) host.Send(i % 2 == 0 ? "$MTSTA?\r\n" : "$SYVER?\r\n");
    EXPECT_TRUE(Eventually([&] { return isDone.load(); }, 10s));
    simulated.Stop();
    return lines;
  }

  static constexpr int kExchanges = 40;
};

TEST_F(FaultySimulator, RepeatsARecordedRunByteForByte) {
  FaultOptions faults;
  faults.loss = faults.duplicate = faults.reorder = faults.truncate = faults.garble = faults.empty =
      faults.foreign = faults.split = kAlways / 4;
  const std::vector<std::string> lines = Run(FaultDice(faults));
  EXPECT_GT(lines.size(), 80u);
  std::string text = kWireRecordTitle;
  for (const std::string& line : lines) text += "\n" + line;
  RecordedFaults recorded;
  std::string complaint;
  ASSERT_TRUE(ReadWireRecord(text, recorded, complaint)) << complaint;
  EXPECT_EQ(recorded.size(), size_t{kExchanges});
  EXPECT_EQ(Run(ReplayOf(recorded)), lines);
  EXPECT_NE(Run({}), lines);
}

TEST_F(FaultySimulator, DoesNotObeyWhatWasLostOnItsWay) {
  const auto state = [](const char* fault) {
    SimulatorOptions options;
    options.port = 0;
    options.faults = Once(1, fault);
    double seconds = 0.0;
    Simulator simulated(options, {}, [&seconds] { return seconds += 0.5; });
    EXPECT_TRUE(simulated.Start());
    LoopbackClient host(options.address, simulated.Port());
    host.Send("$MTTGT=1,300.000000,70.000000,Home\r\n");
    const std::string status = host.Ask("$MTSTA?\r\n");
    return ParseCommandLine(status.substr(0, status.size() - 2)).values.at(1);
  };
  EXPECT_EQ(state("lose-reply"), "2");
  EXPECT_EQ(state("lose-command"), "0");
}

TEST_F(FaultySimulator, RecordsWhatItDoesNotAnswer) {
  std::vector<std::string> bytes;
  SimulatorOptions options;
  options.port = 0;
  options.recorder = [&bytes](const WireDatagram& datagram) {
    if (datagram.exchange == 0) bytes.push_back(datagram.bytes);
  };
  Simulator simulated(options);
  ASSERT_TRUE(simulated.Start());
  LoopbackClient host(options.address, simulated.Port());
  host.Send("\r\n");
  EXPECT_THAT(host.Ask("$SYVER?\r\nrest"), StartsWith("$SYVER="));
  simulated.Stop();
  EXPECT_THAT(bytes, ElementsAre("\r\n", "rest"));
}

}  // namespace
}  // namespace simulator
