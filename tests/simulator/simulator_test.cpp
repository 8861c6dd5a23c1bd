// SPDX-License-Identifier: MIT
// The simulated controller as a whole: over the wire, and with time in the test's hands.
#include "simulator/simulator.h"

#include <gmock/gmock.h>

#include "simulator/civil_time.h"
#include "tests/simulator/loopback_client.h"

namespace simulator {
namespace {

using testing::ElementsAre;

class WholeSimulator : public testing::Test {
 protected:
  WholeSimulator() {
    options.port = 0;
    options.mount.utcSeconds = *SecondsFromCivil({2024, 1, 15, 12, 0, 0.0});
  }
  Simulator::Stopwatch Stopwatch() {
    return [this] { return seconds; };
  }
  Simulator::Reporter Reporter() {
    return [this](const std::string& line) { report.push_back(line); };
  }
  static int State(Simulator& simulated) {
    return std::stoi(ParseCommandLine(simulated.Answer("$MTSTA?")).values.at(1));
  }

  SimulatorOptions options;
  double seconds = 1000.0;
  std::vector<std::string> report;
};

TEST_F(WholeSimulator, AnswersOverTheNetworkWhileItRuns) {
  Simulator simulated(options);
  ASSERT_TRUE(simulated.Start());
  LoopbackClient client(options.address, simulated.Port());
  EXPECT_THAT(client.Ask("$SYVER?\r\n"), testing::StartsWith("$SYVER="));
  EXPECT_EQ(client.Ask("$MTSTP=1\r\n"), "$MTSTP=1\r\n");
  simulated.Stop();
  EXPECT_EQ(simulated.Port(), 0);
}

TEST_F(WholeSimulator, RunsOnThisMachinesTime) {
  Simulator simulated(options);
  const auto clock = [&] {
    return std::stod(ParseCommandLine(simulated.Answer("$MTSTA?")).values.at(0)) * 86400.0;
  };
  const double begin = clock();
  const double systemBegin = SystemUtcSeconds();
  while (SystemUtcSeconds() - systemBegin < 0.1) simulated.Answer("$MTSTA?");
  EXPECT_NEAR(clock() - begin, SystemUtcSeconds() - systemBegin, 0.05);
}

TEST_F(WholeSimulator, LetsTimePassBetweenCommands) {
  Simulator simulated(options, {}, Stopwatch());
  EXPECT_EQ(simulated.Answer("$MTTGT=1,300.000000,70.000000,Home"), "$MTTGT=1");
  seconds += 10.0;
  EXPECT_EQ(State(simulated), 2);
  seconds += 10.0;
  EXPECT_EQ(State(simulated), 0);
  EXPECT_EQ(simulated.Answer("$SYUTM?"), "$SYUTM=2024,1,15,12,0,20");
}

TEST_F(WholeSimulator, HurriesByTheTimeScaleItsClockIncluded) {
  options.timeScale = 20.0;
  Simulator simulated(options, {}, Stopwatch());
  simulated.Answer("$MTTGT=1,300.000000,70.000000,Home");
  seconds += 1.0;
  EXPECT_EQ(State(simulated), 0);
  EXPECT_EQ(simulated.Answer("$SYUTM?"), "$SYUTM=2024,1,15,12,0,20");
}

TEST_F(WholeSimulator, ReportsEveryCommandInPrintableText) {
  Simulator simulated(options, Reporter(), Stopwatch());
  seconds += 1.5;
  simulated.Answer("$MTMV2=0.250000,-0.500000,0.000000");
  simulated.Answer("\x1b[2J\\");
  EXPECT_THAT(report, ElementsAre("12:00:01.500 $MTMV2=0.250000,-0.500000,0.000000 -> $MTMV2=1  "
                                  "(moves 0.250 s, RA -0.500, Dec +0.000 x sidereal)",
                                  "12:00:01.500 \\x1b[2J\\x5c -> $ERROR=COMMAND"));
}

TEST_F(WholeSimulator, CutsOverlongLinesInTheReport) {
  Simulator simulated(options, Reporter(), Stopwatch());
  simulated.Answer(std::string(5000, 'x'));
  ASSERT_EQ(report.size(), 1u);
  EXPECT_LT(report[0].size(), 300u);
}

}  // namespace
}  // namespace simulator
