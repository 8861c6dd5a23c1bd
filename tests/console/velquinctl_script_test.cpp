// SPDX-License-Identifier: MIT
// velquinctl run: files of commands against simulated mounts.
#include <gmock/gmock.h>

#include <algorithm>

#include "simulator/scripted_controller.h"
#include "tests/console/mount_fixture.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

class VelquinctlScript : public VelquinctlTest {
 protected:
  ProgramResult RunScript(const std::string& content, std::vector<std::string> options = {}) {
    WriteWholeFile(folder / L"evening.txt", content);
    options.insert(options.begin(), {"run", File()});
    return RunVelquinctl(options);
  }

  std::string File() const { return (folder / L"evening.txt").string(); }

  TempFolder folder;
};

TEST_F(VelquinctlScript, PerformsItsLinesInOrder) {
  const ProgramResult result =
      RunScript("# an evening\n\ngoto " + Address() + " 6h 20\nsync " + Address() +
                " 6h 20.25  # a star\nguide-speed " + Address() + " 0.5 0.5\n");
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_NEAR(mount.DecDegrees(), 20.25, 1e-4);
  std::vector<std::string> keys;
  for (const std::string& command : mount.Commands()) {
    const std::string key = command.substr(0, 7);
    if (key == "$MTTGT=" || key == "$ALIGN=" || key == "$MTAGS=") keys.push_back(key);
  }
  EXPECT_THAT(keys, testing::ElementsAre("$MTTGT=", "$ALIGN=", "$MTAGS="));
  EXPECT_THAT(result.FirstLine(), StartsWith("> goto " + Address()));
}

TEST_F(VelquinctlScript, AWrongLineIsFoundBeforeAnythingIsSent) {
  const ProgramResult result =
      RunScript("goto " + Address() + " 6h 20\n\ngoto " + Address() + " 6h 200\nfoo\n");
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_EQ(result.out, "");
  ASSERT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, StartsWith(File() + ":3: \"200\" is not a declination"));
  EXPECT_THAT(mount.Commands(), IsEmpty());
}

TEST_F(VelquinctlScript, AMissingFileInALineIsFoundBeforeAnythingIsSent) {
  const ProgramResult result =
      RunScript("goto " + Address() + " 6h 20\nini " + Address() + " C:\\nowhere.ini Mount\n");
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.error, StartsWith(File() + ":2: no such file"));
  EXPECT_THAT(mount.Commands(), IsEmpty());
}

TEST_F(VelquinctlScript, AnInvalidAddressInALineIsFoundBeforeAnythingIsSent) {
  const ProgramResult result =
      RunScript("goto " + Address() + " 6h 20\nstatus 300.1.2.3\n", {"--quiet"});
  EXPECT_EQ(result.exitCode, 2);
  EXPECT_THAT(result.error, StartsWith(File() + ":2: \"300.1.2.3\" is not a valid IPv4 address"));
  EXPECT_THAT(mount.Commands(), IsEmpty());
}

TEST_F(VelquinctlScript, AFailingLineEndsTheRun) {
  const ProgramResult result =
      RunScript("goto " + Address() + " 6h 20\ngoto " + Address() + " 5h -80\nhome " + Address());
  EXPECT_EQ(result.exitCode, 1);
  ASSERT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error, StartsWith(File() + ":2: the goto was refused"));
  EXPECT_NEAR(mount.DecDegrees(), 20.0, 1e-4);
  EXPECT_FALSE(mount.Saw("$MTTGT=1,270.000000,0.000000,Home"));
}

TEST_F(VelquinctlScript, MeridianOverridesHoldForTheLinesBehind) {
  WriteWholeFile(folder / L"mount.ini", "[East]\r\n_OverrideMeridianStopPoint=5.5\r\n");
  const ProgramResult result =
      RunScript("ini " + Address() + " \"" + (folder / L"mount.ini").string() +
                "\" East\nguide-speed " + Address() + " 0.5 0.5\n");
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_TRUE(mount.Saw("$MTAGS=0.500000,0.500000"));
  EXPECT_TRUE(mount.Saw("$MTCOM=5.500000,3.000000"));
  EXPECT_FALSE(mount.Saw("$MTCOM=0.000000,3.000000"));
}

TEST_F(VelquinctlScript, CheckBetweenOtherCommandsAsksAnew) {
  const ProgramResult result = RunScript("status " + Address() + " --json\ncheck " + Address() +
                                         "\nstatus " + Address() + " --json\n");
  EXPECT_EQ(result.exitCode, 0);
  const auto commands = mount.Commands();
  EXPECT_EQ(std::count(commands.begin(), commands.end(), "$MTCOM=0.000000,3.000000"), 2)
      << "a session before and one after";
  EXPECT_THAT(result.out, HasSubstr(Address() + " answers: version "));
}

TEST_F(VelquinctlScript, OptionsOfTheRunHoldForItsLines) {
  const ProgramResult result =
      RunScript("goto " + Address() + " 6h 20\npulse " + Address() + " --north 50\n", {"--json"});
  EXPECT_EQ(result.exitCode, 0);
  ASSERT_THAT(result.OutLines(), SizeIs(2));
  EXPECT_EQ(json::parse(result.OutLines()[0])["command"], "goto");
  EXPECT_EQ(json::parse(result.OutLines()[1])["command"], "pulse");
}

TEST_F(VelquinctlScript, MayBeInUtf16) {
  // From the pole, where the mount is at first, only the south is left to go.
  std::string content = "\xFF\xFE";
  for (const char c : "pulse " + Address() + " --south 50\r\n") content += {c, '\0'};
  const ProgramResult result = RunScript(content);
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_THAT(result.FirstLine(), testing::Eq("> pulse " + Address() + " --south 50"));
}

TEST_F(VelquinctlScript, AnEmptyScriptIsDone) {
  const ProgramResult result = RunScript("# nothing today\n");
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(result.out, "");
}

TEST(VelquinctlSessions, ANewOneKnowsNoPositionOfTheOneBefore) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.Status("61055.5,1,0,0,0,45.0,270,30,6.0,22.5,4");
  const TempFolder folder;
  const std::string file = (folder / L"two.txt").string();
  // The second session is another one because it has another name; its mount tells no position.
  WriteWholeFile(file, "guide-speed " + controller.Address() + " 0.5 0.5 --quiet\nstatus " +
                           controller.Address() + " --name other --timeout 1\n");
  VelquinctlRun run({"run", file});
  ASSERT_TRUE(controller.WaitFor("$MTAGS=0.500000,0.500000", 20000));
  controller.IsSilentTo("$MTSTA?");
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.error, file + ":2: " + controller.Address() +
                              " answers, but reports no position of the mount\n");
}

}  // namespace
