// SPDX-License-Identifier: MIT
// velquinctl check, status and monitor, with the real library and a simulated mount.
#include <gmock/gmock.h>

#include <algorithm>

#include "simulator/scripted_controller.h"
#include "tests/console/mount_fixture.h"
#include "tests/support/eventually.h"
#include "tests/support/pattern.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(VelquinctlTest, CheckTellsTheVersion) {
  const ProgramResult result = RunVelquinctl({"check", Address()});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.error, "");
  const std::string version = mount.Say("$SYVER?").substr(std::string("$SYVER=").size());
  EXPECT_EQ(result.out, Address() + " answers: version " + version + "\n");
}

TEST_F(VelquinctlTest, CheckStartsNoSession) {
  RunVelquinctl({"check", Address()});
  for (const std::string& command : mount.Commands())
    EXPECT_TRUE(command == "$SYVER?" || command == "$MTMDL?") << command;
}

TEST(VelquinctlSilentMount, CheckFailsInOneLine) {
  const simulator::ScriptedController silent;
  const ProgramResult result = RunVelquinctl({"check", silent.Address()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.error, "velquinctl: no answer from " + silent.Address() + "\n");
}

TEST(VelquinctlSilentMount, TheDriversMessageIsPassedOn) {
  const simulator::ScriptedController silent;
  const ProgramResult result = RunVelquinctl({"status", silent.Address()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  ASSERT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, StartsWith("velquinctl: no answer from " + silent.Address()));
  EXPECT_THAT(result.error, HasSubstr("望遠鏡から応答がありません。"));
}

TEST_F(VelquinctlTest, StatusShowsWhereTheMountPoints) {
  mount.PointAt(5.575528, 22.014444);
  const ProgramResult result = RunVelquinctl({"status", Address()});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_THAT(result.out, HasSubstr("05h34m31.90s"));
  EXPECT_THAT(result.out, HasSubstr("+22d00m52.0s"));
  EXPECT_THAT(result.out, HasSubstr("ready"));
}

TEST_F(VelquinctlTest, StatusForProgramsIsOneObjectWithUnits) {
  mount.PointAt(6.0, -5.2);
  const ProgramResult result = RunVelquinctl({"status", Address(), "--json"});
  EXPECT_EQ(result.exitCode, 0);
  ASSERT_THAT(result.OutLines(), SizeIs(1));
  const json status = Json(result);
  EXPECT_EQ(status["command"], "status");
  EXPECT_EQ(status["address"], Address());
  EXPECT_EQ(status["ok"], true);
  EXPECT_NEAR(status["raDegrees"].get<double>(), 90.0, 1e-3);
  EXPECT_NEAR(status["decDegrees"].get<double>(), -5.2, 1e-4);
  EXPECT_EQ(status["decText"], "-05d12m00.0s");
  EXPECT_EQ(status["ready"], true);
  // Up to 90 degrees on the declination circle is side 0.
  EXPECT_EQ(status["pierSide"], mount.Status()[5] <= 90.0 ? 0 : 1);
}

TEST_F(VelquinctlTest, StatusTellsWhatTheMountIsDoing) {
  const auto state = [&] {
    const auto lines = RunVelquinctl({"status", Address()}).OutLines();
    return lines.size() == 4 ? lines[2] : "";
  };
  EXPECT_EQ(state(), "state             ready, not tracking") << "at home the sky passes over it";
  mount.PointAt(6.0, 0.0);
  EXPECT_EQ(state(), "state             ready, tracking");
  mount.Say("$MTMV2=30.0,0,1000");  // 4.18 degrees a second northward
  EXPECT_TRUE(FitsPattern(state(), "state +ready, slewing at [34][.][0-9]+.*/s")) << state();
  mount.Say("$MTTGT=2,270,30,");
  ASSERT_TRUE(Eventually([&] { return mount.State() == 3; }, std::chrono::seconds(20)));
  EXPECT_EQ(state(), "state             not ready (parked)");
}

TEST(VelquinctlSilentMount, AFailureForProgramsIsAnObjectToo) {
  const simulator::ScriptedController silent;
  const ProgramResult result = RunVelquinctl({"--json", "status", silent.Address()});
  EXPECT_EQ(result.exitCode, 1);
  const json failure = json::parse(result.out);
  EXPECT_EQ(failure["ok"], false);
  EXPECT_EQ(failure["exitCode"], 1);
  EXPECT_THAT(failure["error"].get<std::string>(), StartsWith("no answer from "));
  EXPECT_THAT(result.ErrorLines(), SizeIs(1));
}

TEST_F(VelquinctlTest, AWatchedStatusIsRedrawnOnOneLine) {
  const ProgramResult result =
      RunVelquinctl({"status", Address(), "--watch", "--for", "0.6", "--progress", "live"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.OutLines(), SizeIs(1));
  EXPECT_GE(std::count(result.out.begin(), result.out.end(), '\r'), 3);
}

TEST_F(VelquinctlTest, MonitorMakesARowEachInterval) {
  const ProgramResult result =
      RunVelquinctl({"monitor", Address(), "--for", "1.2", "--interval", "0.4"});
  EXPECT_EQ(result.exitCode, 0);
  const auto lines = result.OutLines();
  ASSERT_GE(lines.size(), 4u);
  EXPECT_LE(lines.size(), 6u);
  EXPECT_THAT(lines[0], HasSubstr("declination"));
  const char* row = "[-0-9]+ [:0-9]+  [0-9hm.]+s [-+0-9dm.]+s .*ready(, speed not known yet)?";
  for (size_t i = 1; i < lines.size(); ++i) EXPECT_TRUE(FitsPattern(lines[i], row)) << lines[i];
}

TEST_F(VelquinctlTest, MonitorForProgramsIsAnObjectARow) {
  mount.PointAt(6.0, 20.0);
  const ProgramResult result =
      RunVelquinctl({"monitor", Address(), "--for", "0.9", "--interval", "0.4", "--json"});
  EXPECT_EQ(result.exitCode, 0);
  const auto lines = result.OutLines();
  ASSERT_GE(lines.size(), 3u);
  for (const std::string& line : lines) {
    const json row = json::parse(line);
    EXPECT_EQ(row["valid"], true);
    EXPECT_NEAR(row["raDegrees"].get<double>(), 90.0, 1e-3);
    const json& speed = row["speedDegreesPerSecond"];
    if (&line == &lines.front()) {
      EXPECT_TRUE(speed.is_null()) << "there is nothing to measure against";
    } else {
      EXPECT_LT(speed.get<double>(), 0.01);
    }
  }
}

TEST_F(VelquinctlTest, MonitorTellsHowLongThePositionHasBeenTheSame) {
  mount.PointAt(6.0, 20.0);
  const ProgramResult result =
      RunVelquinctl({"monitor", Address(), "--for", "2.5", "--interval", "0.5"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.OutLines().back(), HasSubstr("ready, position unchanged for 2 s"));
}

TEST_F(VelquinctlTest, MonitorMeasuresTheSpeed) {
  mount.PointAt(6.0, 0.0);
  VelquinctlRun run({"monitor", Address(), "--for", "2", "--interval", "0.5", "--json"});
  mount.Say("$MTMV2=10.0,0,1000");  // 4.18 degrees a second northward
  const ProgramResult result = run.Wait();
  ASSERT_EQ(result.exitCode, 0);
  // A late answer of the mount makes one row slower and the next one faster, so look at all.
  const auto lines = result.OutLines();
  ASSERT_GE(lines.size(), 4u);
  double sum = 0.0;
  for (size_t i = 1; i < lines.size(); ++i)
    sum += json::parse(lines[i])["speedDegreesPerSecond"].get<double>();
  EXPECT_NEAR(sum / static_cast<double>(lines.size() - 1), 4.18, 1.0) << result.out;
}

}  // namespace
