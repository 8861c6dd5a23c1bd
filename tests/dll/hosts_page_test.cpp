// SPDX-License-Identifier: MIT
// The host that docs/hosts.md shows, cut out of the page and built.
#include <gtest/gtest.h>

#include <algorithm>

#include "simulator/scripted_controller.h"
#include "tests/dll/run_program.h"

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

TEST(HostsPage, ShowsAHostThatRefusesWrongArguments) {
  EXPECT_EQ(RunProgram("goto_host.exe", {}), 2u);
}

}  // namespace
