// SPDX-License-Identifier: MIT
// The hosts that docs/hosts.md shows, cut out of the page and built.
#include <gtest/gtest.h>

#include <algorithm>
#include <thread>

#include "simulator/scripted_controller.h"
#include "tests/library/dll/run_program.h"

namespace {

constexpr int kSoonMs = 10'000;

TEST(HostsPage, ShowsAHostThatGoesToAPosition) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status("60000.5,1,0,0,0,90.0,10,20,6.0,22.5,4");
  EXPECT_EQ(RunProgram("goto_host.exe", {controller.Address(), "90", "22.5"}), 0u);
  // The goto comes after the command that ends the hand-over of site and clock.
  const auto commands = controller.Commands();
  const auto unpark =
      std::find(commands.begin(), commands.end(), "$MTTGT=3,6.000000,22.500000,Star");
  ASSERT_NE(unpark, commands.end());
  EXPECT_NE(std::find(unpark, commands.end(), "$MTTGT=3,6.000000,22.500000,"), commands.end());
}

TEST(HostsPage, ShowsAHostThatStopsTheMountWhenThePositionIsLost) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.IsSilentTo("$MTSTA?");
  EXPECT_EQ(RunProgram("goto_host.exe", {controller.Address(), "90", "22.5"}), 1u);
  EXPECT_TRUE(controller.WaitFor("$MTSTP=1", kSoonMs));
}

TEST(HostsPage, ShowsHostsThatRefuseWrongArguments) {
  EXPECT_EQ(RunProgram("goto_host.exe", {}), 2u);
  EXPECT_EQ(RunProgram("park_host.exe", {}), 2u);
}

constexpr char kTracking[] = "60000.5,1,0,0,0,90.0,10,20,6.0,22.5,4";
constexpr char kParked[] = "60000.5,3,0,0,0,90.0,10,20,6.0,22.5,1";
constexpr char kPark[] = "$MTTGT=2,10.000000,20.000000,Park";

TEST(HostsPage, ShowsAHostThatParks) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status(kTracking);
  std::thread mount([&controller] {
    if (controller.WaitFor(kPark, kSoonMs)) controller.Status(kParked);
  });
  EXPECT_EQ(RunProgram("park_host.exe", {controller.Address()}), 0u);
  mount.join();
  EXPECT_FALSE(controller.Saw("$MTSTP=1"));
}

TEST(HostsPage, ShowsAHostThatNoticesARefusalWithoutAWord) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status(kTracking);
  EXPECT_EQ(RunProgram("park_host.exe", {controller.Address()}), 1u);
  EXPECT_TRUE(controller.Saw(kPark));
}

TEST(HostsPage, ShowsAHostThatAnswersTheBoxAboutTheHorizon) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status(kTracking);
  controller.Answers(kPark, "$MTTGT=BELOWHORIZON");
  EXPECT_EQ(RunProgram("park_host.exe", {controller.Address()}), 1u);
  EXPECT_TRUE(controller.WaitFor("$MTSTP=1", kSoonMs)) << "a box keeps it from the mount";
}

TEST(HostsPage, ShowsAHostThatAnswersTheBoxOfAStartThatFails) {
  simulator::ScriptedController silent;
  EXPECT_EQ(RunProgram("park_host.exe", {silent.Address()}), 1u);
}

TEST(HostsPage, ShowsAHostThatDoesNotParkWithoutAPosition) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.IsSilentTo("$MTSTA?");
  EXPECT_EQ(RunProgram("park_host.exe", {controller.Address()}), 1u);
  EXPECT_FALSE(controller.Saw("$MTTGT=2,0.000000,0.000000,Park"));
}

}  // namespace
