// SPDX-License-Identifier: MIT
// velquinctl commands that move a simulated mount through the real library.
#include <gmock/gmock.h>

#include <algorithm>

#include "simulator/scripted_controller.h"
#include "tests/console/mount_fixture.h"
#include "tests/support/eventually.h"
#include "tests/support/pattern.h"

namespace {

using nlohmann::json;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

constexpr int kTracking = 1;
constexpr int kSlewing = 2;
constexpr int kParked = 3;

/// The mount refuses to move, and the sky that passes over it is no motion.
void ExpectUnmoved(const std::vector<std::string>& command) {
  const ProgramResult result = RunVelquinctl(command);
  EXPECT_EQ(result.exitCode, 1) << command[0];
  EXPECT_THAT(result.error, HasSubstr("the mount did not move: it is not ready (parked)"));
}

TEST_F(VelquinctlTest, GotoEndsWithThePositionReached) {
  const ProgramResult result = RunVelquinctl({"goto", Address(), "5h34m31.9s", "+22d00m52s"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.error, "");
  EXPECT_NEAR(mount.RaDegrees(), 83.632917, 1e-3);
  EXPECT_NEAR(mount.DecDegrees(), 22.014444, 1e-4);
  EXPECT_EQ(mount.State(), kTracking);
  EXPECT_THAT(result.LastLine(), StartsWith("reached 05h34m31.90s +22d00m52.0s"));
}

TEST_F(VelquinctlTest, GotoTakesNegativeDeclinationsAsTheyAreWritten) {
  EXPECT_EQ(RunVelquinctl({"goto", Address(), "05:35:17", "-5:12:00"}).exitCode, 0);
  EXPECT_NEAR(mount.DecDegrees(), -5.2, 1e-4);
  EXPECT_EQ(RunVelquinctl({"goto", Address(), "83.8", "--", "-5.4"}).exitCode, 0);
  EXPECT_NEAR(mount.DecDegrees(), -5.4, 1e-4);
  EXPECT_NEAR(mount.RaDegrees(), 83.8, 1e-3);
}

TEST_F(VelquinctlTest, GotoForProgramsIsOneObject) {
  const ProgramResult result = RunVelquinctl({"goto", Address(), "90.0", "20", "--json"});
  EXPECT_EQ(result.exitCode, 0);
  ASSERT_THAT(result.OutLines(), SizeIs(1));
  const json reached = Json(result);
  EXPECT_EQ(reached["ok"], true);
  EXPECT_EQ(reached["targetRaDegrees"], 90.0);
  EXPECT_NEAR(reached["raDegrees"].get<double>(), 90.0, 1e-3);
  EXPECT_LE(reached["distanceDegrees"].get<double>(), 60 / 3600.0);
  EXPECT_GT(reached["elapsedSeconds"].get<double>(), 0.5);
}

TEST_F(VelquinctlTest, GotoShowsItsProgressAsAsked) {
  const ProgramResult live = RunVelquinctl({"goto", Address(), "6h", "20", "--progress", "live"});
  EXPECT_THAT(live.out, HasSubstr("\r["));
  EXPECT_THAT(live.out, HasSubstr("100%"));
  EXPECT_THAT(live.OutLines(), SizeIs(2)) << "the redrawn line and the result";
  const ProgramResult plain = RunVelquinctl({"goto", Address(), "5h", "10"});
  EXPECT_THAT(plain.out, Not(HasSubstr("\r")));
  EXPECT_THAT(plain.FirstLine(), HasSubstr("left"));
  const ProgramResult none = RunVelquinctl({"goto", Address(), "6h", "20", "--progress", "none"});
  EXPECT_THAT(none.OutLines(), SizeIs(1));
  const ProgramResult quiet = RunVelquinctl({"goto", Address(), "5h", "10", "--quiet"});
  EXPECT_EQ(quiet.out, "");
  EXPECT_EQ(quiet.exitCode, 0);
}

TEST_F(VelquinctlTest, ProgressBesideAJsonResultGoesToStandardError) {
  const ProgramResult result =
      RunVelquinctl({"goto", Address(), "6h", "20", "--json", "--progress", "plain"});
  EXPECT_EQ(Json(result)["ok"], true);
  EXPECT_THAT(result.error, HasSubstr("left"));
}

TEST_F(VelquinctlTest, ATargetBelowTheHorizonFailsWithTheDriversWords) {
  mount.PointAt(6.0, 20.0);
  const ProgramResult result =
      RunVelquinctl({"goto", Address(), "5h", "-80", "--progress", "none"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  ASSERT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, StartsWith("velquinctl: the goto was refused: target below the "));
  EXPECT_THAT(result.error, HasSubstr("天体が地平線下です。"));
  EXPECT_NEAR(mount.DecDegrees(), 20.0, 1e-4);
  EXPECT_FALSE(mount.Saw("$MTSTP=1")) << "a mount that refused goes on as before";
}

TEST(VelquinctlSlowMount, ARefusedGotoDoesNotHideThatTheMountMoves) {
  SimulatedMount mount(4.0);
  mount.Say("$MTTGT=3,5.0,10.0,");
  const ProgramResult result =
      RunVelquinctl({"goto", mount.Address(), "5h", "-80", "--progress", "none"});
  EXPECT_EQ(result.exitCode, 1);
  ASSERT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, StartsWith("velquinctl: the goto was refused: "));
  EXPECT_THAT(result.error, HasSubstr("; the mount is slewing: the mount may still be moving"));
}

TEST(VelquinctlSlowMount, AGotoThatTakesTooLongIsStopped) {
  SimulatedMount mount(2.0);
  const ProgramResult result =
      RunVelquinctl({"goto", mount.Address(), "5h", "10", "--timeout", "1.5"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, HasSubstr("; the controller acknowledged the stop"));
  EXPECT_TRUE(mount.Saw("$MTSTP=1"));
  EXPECT_TRUE(Eventually([&] { return mount.State() == kTracking; }, std::chrono::seconds(5)));
  EXPECT_GT(mount.DecDegrees(), 30.0) << "far from the target";
}

TEST(VelquinctlSlowMount, CtrlCStopsTheMountAndEndsTheSession) {
  SimulatedMount mount(2.0);
  VelquinctlRun run({"goto", mount.Address(), "5h", "10"});
  ASSERT_TRUE(Eventually([&] { return mount.State() == kSlewing; }, std::chrono::seconds(20)));
  ASSERT_TRUE(run.Interrupt());
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 130);
  EXPECT_EQ(result.error, "velquinctl: interrupted; the controller acknowledged the stop\n");
  EXPECT_TRUE(mount.Saw("$MTSTP=1"));
}

TEST_F(VelquinctlTest, ASecondCtrlCEndsAtOnce) {
  mount.PointAt(6.0, 10.0);
  VelquinctlRun run({"pulse", Address(), "--north", "30000"});
  ASSERT_TRUE(Eventually([&] { return mount.Saw("$MTMV2=30.000000,0.000000,1.000000"); },
                         std::chrono::seconds(20)));
  ASSERT_TRUE(run.Interrupt());
  EXPECT_EQ(run.Wait(std::chrono::seconds(1)).exitCode, -1) << "the driver finishes its pulse";
  ASSERT_TRUE(run.Interrupt());
  const ProgramResult result = run.Wait(std::chrono::seconds(10));
  EXPECT_EQ(result.exitCode, 130);
  EXPECT_THAT(result.error, HasSubstr("the mount may still be moving"));
}

TEST(VelquinctlDeafMount, CtrlCTellsOfAPulseThatWasLost) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  const std::string pulse = "$MTMV2=2.000000,0.000000,1.000000";
  controller.IsSilentTo(pulse);
  VelquinctlRun run({"pulse", controller.Address(), "--north", "2000"});
  ASSERT_TRUE(controller.WaitFor(pulse, 20000));
  ASSERT_TRUE(run.Interrupt());
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 130);
  EXPECT_THAT(result.error,
              HasSubstr("interrupted; not every pulse was acknowledged, and the mount "
                        "may still be moving"));
}

TEST(VelquinctlDeafMount, FallingSilentEndsTheGoto) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  VelquinctlRun run(
      {"goto", controller.Address(), "5h", "10", "--progress", "none", "--timeout", "12"});
  ASSERT_TRUE(controller.WaitFor("$MTTGT=3,5.000000,10.000000,", 20000));
  controller.IsSilentTo("$MTSTA?");
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.error, "velquinctl: " + controller.Address() +
                              " stopped responding; the controller acknowledged the stop\n");
}

TEST(VelquinctlDeafMount, AGotoThatNothingFollowsIsReported) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status("61055.5,1,0,0,0,45.0,270,30,6.0,22.5,4");
  const ProgramResult result =
      RunVelquinctl({"goto", controller.Address(), "5h", "10", "--progress", "none"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.error,
            "velquinctl: the mount did not move: target below the horizon or command refused\n");
  EXPECT_FALSE(controller.Saw("$MTSTP=1"));
}

TEST_F(VelquinctlTest, SyncMakesTheMountBelieveThePosition) {
  mount.PointAt(6.0, 20.0);
  const ProgramResult result = RunVelquinctl({"sync", Address(), "6h01m", "20.5"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_NEAR(mount.RaDegrees(), 90.25, 1e-3);
  EXPECT_NEAR(mount.DecDegrees(), 20.5, 1e-4);
  EXPECT_THAT(result.out, HasSubstr("06h01m00.00s +20d30m00.0s"));
}

TEST(VelquinctlDeafMount, ASyncThatChangesNothingIsReported) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status("61055.5,1,0,0,0,45.0,270,30,6.0,22.5,4");
  const ProgramResult result =
      RunVelquinctl({"sync", controller.Address(), "6h", "10", "--yes", "--timeout", "2"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.error, HasSubstr("06h00m00.00s +22d30m00.0s, 12.50° away"));
}

TEST(VelquinctlDeafMount, ARefusedSmallSyncIsReported) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status("61055.5,1,0,0,0,45.0,270,30,6.0,22.5,4");
  controller.Answers("$ALIGN=", "$ALIGN=ERROR");
  const auto sync = [&](const char* declination) {
    return RunVelquinctl({"sync", controller.Address(), "6h", declination, "--timeout", "2"});
  };
  const ProgramResult refused = sync("22.51");  // 36 seconds of arc
  EXPECT_EQ(refused.exitCode, 1) << refused.out;
  EXPECT_THAT(refused.error, HasSubstr("the mount did not accept the sync"));
  const ProgramResult there = sync("22.5");
  EXPECT_EQ(there.exitCode, 1) << there.out;
  EXPECT_THAT(there.error, HasSubstr("whether it took the sync cannot be told"));
}

TEST_F(VelquinctlTest, ASyncFarAwayWantsAYes) {
  mount.PointAt(6.0, 20.0);
  const ProgramResult asked = RunVelquinctl({"sync", Address(), "7h", "20"});
  EXPECT_EQ(asked.exitCode, 2);
  EXPECT_THAT(asked.error, HasSubstr("14.09° from where the mount thinks it points"));
  EXPECT_THAT(asked.error, HasSubstr("--yes"));
  EXPECT_NEAR(mount.RaDegrees(), 90.0, 1e-3);
  EXPECT_EQ(RunVelquinctl({"sync", Address(), "7h", "20", "--yes"}).exitCode, 0);
  EXPECT_NEAR(mount.RaDegrees(), 105.0, 1e-3);
}

TEST_F(VelquinctlTest, AParkedMountIsNotSynchronised) {
  mount.Say("$MTTGT=2,270,30,");
  ASSERT_TRUE(Eventually([&] { return mount.State() == kParked; }, std::chrono::seconds(20)));
  const ProgramResult result = RunVelquinctl({"sync", Address(), "6h", "20", "--yes"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.error,
              HasSubstr("the mount is not ready (parked) and cannot be synchronised"));
  EXPECT_THAT(mount.Commands(), Not(Contains(StartsWith("$ALIGN="))));
}

TEST_F(VelquinctlTest, MovesShowWhatTheCoordinatesDo) {
  mount.PointAt(6.0, 20.0);
  // The same word, the opposite sign.
  const json slewed = Json(RunVelquinctl({"slew", Address(), "east", "--for", "0.4", "--json"}));
  EXPECT_GT(slewed["raMovedDegrees"].get<double>(), 0.05);
  EXPECT_NEAR(slewed["decMovedDegrees"].get<double>(), 0.0, 1e-3);
  const ProgramResult pulsed = RunVelquinctl({"pulse", Address(), "--east", "400"});
  EXPECT_EQ(pulsed.exitCode, 0) << pulsed.error;
  EXPECT_TRUE(
      FitsPattern(pulsed.LastLine(), "pulses acknowledged: .*right ascension -[0-9.]+\", .*"))
      << pulsed.out;
}

TEST_F(VelquinctlTest, AShortGuidePulseIsSeen) {
  mount.PointAt(6.0, 20.0);
  for (const char* direction : {"--north", "--south", "--east", "--west"}) {
    const ProgramResult result = RunVelquinctl(
        {"pulse", Address(), direction, "100", "--rate-dec", "0.5", "--rate-ra", "0.5"});
    EXPECT_EQ(result.exitCode, 0) << direction << ' ' << result.error;
  }
}

TEST_F(VelquinctlTest, MovesThatOutlastTheTimeLimitAreRefused) {
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"slew", Address(), "east", "--for", "3", "--timeout", "3"},
        std::vector<std::string>{"pulse", Address(), "--east", "3000", "--timeout", "3"}}) {
    const ProgramResult result = RunVelquinctl(words);
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_THAT(result.error, HasSubstr("--timeout must be longer than "));
  }
  EXPECT_THAT(mount.Commands(), testing::IsEmpty());
}

TEST(VelquinctlDeafMount, AStopIsRepeatedUntilItIsAcknowledged) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  // Two connections fail, then a stop is lost: the fourth attempt is the one.
  int versions = 0;
  int stops = 0;
  controller.SetFaults([&](int, std::string_view command) {
    simulator::Fault fault;
    if (command.starts_with("$SYVER?")) fault.losesCommand = ++versions <= 2;
    if (command.starts_with("$MTSTP=1")) fault.losesCommand = ++stops <= 1;
    return fault;
  });
  const ProgramResult result = RunVelquinctl({"stop", controller.Address(), "--timeout", "20"});
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_EQ(controller.CountOf("$MTSTP=1"), 2);
}

TEST(VelquinctlSlowMount, StopEndsASlew) {
  SimulatedMount mount(8.0);
  mount.Say("$MTTGT=3,5.0,10.0,");
  ASSERT_EQ(mount.State(), kSlewing);
  const ProgramResult result = RunVelquinctl({"stop", mount.Address()});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_THAT(result.out, StartsWith("stopped at "));
  EXPECT_EQ(mount.State(), kTracking);
  EXPECT_GT(mount.DecDegrees(), 15.0) << "on the way";
}

TEST_F(VelquinctlTest, HomeAndParkAndUnparkAreWaitedFor) {
  mount.PointAt(6.0, 20.0);
  const ProgramResult home = RunVelquinctl({"home", Address()});
  EXPECT_EQ(home.exitCode, 0);
  EXPECT_THAT(home.LastLine(), StartsWith("home, at "));
  EXPECT_NEAR(mount.DecDegrees(), 90.0, 1e-4);

  const ProgramResult park = RunVelquinctl({"park", Address()});
  EXPECT_EQ(park.exitCode, 0);
  EXPECT_THAT(park.LastLine(), StartsWith("parked at "));
  EXPECT_EQ(mount.State(), kParked);
  EXPECT_EQ(Json(RunVelquinctl({"status", Address(), "--json"}))["ready"], false);
  ExpectUnmoved({"slew", Address(), "west", "--for", "0.3"});
  ExpectUnmoved({"slew", Address(), "north", "--for", "0.3", "--speed", "9"});
  ExpectUnmoved({"pulse", Address(), "--north", "300"});

  const ProgramResult unpark = RunVelquinctl({"unpark", Address()});
  EXPECT_EQ(unpark.exitCode, 0);
  EXPECT_THAT(unpark.out, StartsWith("unparked: "));
  EXPECT_EQ(mount.State(), kTracking);
}

TEST(VelquinctlSlowMount, HomeDoesNotTakeAnothersStopForTheEnd) {
  SimulatedMount mount(10.0);
  mount.PointAt(6.0, 20.0);
  VelquinctlRun run({"home", mount.Address(), "--progress", "none"});
  ASSERT_TRUE(Eventually([&] { return mount.State() == kSlewing && mount.DecDegrees() > 25.0; },
                         std::chrono::seconds(20)));
  mount.Say("$MTSTP=1");
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 1) << result.out;
  EXPECT_THAT(result.error, StartsWith("velquinctl: the mount moved and rests at "));
  EXPECT_THAT(result.error, HasSubstr("ready; whether that is home is not known"));
}

TEST(VelquinctlDeafMount, AHomeThatHadNoTimeToBeginIsStopped) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  const ProgramResult result =
      RunVelquinctl({"home", controller.Address(), "--timeout", "3", "--progress", "none"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.error, HasSubstr("the mount did not do it in time"));
  EXPECT_THAT(result.error, HasSubstr("; the controller acknowledged the stop"));
  EXPECT_TRUE(controller.Saw("$MTSTP=1"));
}

TEST(VelquinctlSlowMount, StopDoesNotCallACreepingMountStopped) {
  SimulatedMount mount;
  mount.PointAt(6.0, 20.0);
  VelquinctlRun creep({"slew", mount.Address(), "north", "--speed", "1", "--for", "12"});
  ASSERT_TRUE(Eventually([&] { return mount.DecDegrees() > 20.1; }, std::chrono::seconds(20)));
  const ProgramResult result = RunVelquinctl({"stop", mount.Address(), "--timeout", "4"});
  EXPECT_EQ(result.exitCode, 1) << result.out;
  EXPECT_THAT(result.error, HasSubstr("no reading shows the mount at rest"));
}

TEST(VelquinctlDeafMount, AParkThatDoesNotHappenIsReported) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status("61055.5,1,0,0,0,45.0,270,30,6.0,22.5,4");
  const ProgramResult result =
      RunVelquinctl({"park", controller.Address(), "--timeout", "2", "--progress", "none"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_TRUE(controller.Saw("$MTTGT=2,270.000000,30.000000,Park"));
}

TEST_F(VelquinctlTest, SlewRenewsTheMoveAndEndsItInTime) {
  mount.PointAt(6.0, 10.0);
  const ProgramResult result =
      RunVelquinctl({"slew", Address(), "north", "--speed", "9", "--for", "1.5"});
  EXPECT_EQ(result.exitCode, 0);
  const auto commands = mount.Commands();
  EXPECT_GE(std::count(commands.begin(), commands.end(), "$MTMV2=1.000000,0.000000,200.000000"), 5);
  const auto lastMove = std::find_if(commands.rbegin(), commands.rend(), [](const auto& command) {
    return command.starts_with("$MTMV2=");
  });
  ASSERT_NE(lastMove, commands.rend());
  EXPECT_EQ(*lastMove, "$MTMV2=1.000000,0.000000,0.000000");
  // 200 times 15.04 seconds of arc a second, for a second and a half; a second more if nobody
  // ended the last move.
  EXPECT_NEAR(mount.DecDegrees(), 10.0 + 1.5 * 200 * 15.04 / 3600, 0.35);
  EXPECT_TRUE(FitsPattern(result.LastLine(), "moved [0-9.]+.* north, to .*")) << result.out;
}

TEST(VelquinctlDeafMount, ASlewThatMovesNothingIsReported) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  const ProgramResult result = RunVelquinctl({"slew", controller.Address(), "east", "--quiet"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.error, "velquinctl: the mount did not move\n");
}

TEST(VelquinctlDeafMount, ARefusedMoveOfAMountThatTurnsWithTheSkyIsReported) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Answers("$MTMV2=", "$MTMV2=ERROR");
  // It does not track: 15 seconds of arc a second. Each status is newer by about a tenth.
  std::vector<simulator::ScriptedReply> turning;
  for (int i = 0; i < 300; ++i) {
    turning.push_back("$MTSTA=61055.5,1,0,0,0,45.0,270,30," +
                      std::to_string(6.0 + i * 0.1 / 3600.0) + "00,22.5,4");
  }
  controller.AnswersInTurn("$MTSTA?", turning);
  const ProgramResult result = RunVelquinctl({"pulse", controller.Address(), "--west", "300"});
  EXPECT_EQ(result.exitCode, 1) << result.out;
  EXPECT_THAT(result.error, HasSubstr("the mount was not seen to move"));
}

TEST(VelquinctlSlowMount, AMountThatMovesAlreadyIsGivenNoPulse) {
  SimulatedMount mount(4.0);
  mount.Say("$MTTGT=3,5.0,10.0,");
  for (const std::vector<std::string>& words :
       {std::vector<std::string>{"pulse", mount.Address(), "--north", "300"},
        std::vector<std::string>{"slew", mount.Address(), "south"}}) {
    const ProgramResult result = RunVelquinctl(words);
    EXPECT_EQ(result.exitCode, 1) << result.out;
    EXPECT_THAT(result.error, HasSubstr("the mount is slewing already, at "));
  }
  EXPECT_THAT(mount.Commands(), Not(Contains(StartsWith("$MTMV2="))));
}

TEST_F(VelquinctlTest, PulsesAreSentOneAfterTheOther) {
  mount.PointAt(6.0, 10.0);
  const ProgramResult result = RunVelquinctl({"pulse", Address(), "--north", "400", "--west", "250",
                                              "--rate-dec", "2", "--rate-ra", "0.5", "--json"});
  EXPECT_EQ(result.exitCode, 0);
  const auto commands = mount.Commands();
  const auto first =
      std::find(commands.begin(), commands.end(), "$MTMV2=0.400000,0.000000,2.000000");
  ASSERT_GE(commands.end() - first, 2);
  EXPECT_EQ(first[1], "$MTMV2=0.250000,0.500000,0.000000");
  const json moved = Json(result);
  EXPECT_EQ(moved["northMs"], 400);
  EXPECT_NEAR((moved["decDegrees"].get<double>() - 10.0) * 3600, 0.4 * 2 * 15.04, 0.5);
}

}  // namespace
