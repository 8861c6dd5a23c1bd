// SPDX-License-Identifier: MIT
// velquinctl commands and options that hand something to the driver.
#include <gmock/gmock.h>

#include "simulator/scripted_controller.h"
#include "tests/console/mount_fixture.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using nlohmann::json;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

TEST_F(VelquinctlTest, GuideSpeedAndAlignmentResetReachTheController) {
  EXPECT_EQ(RunVelquinctl({"guide-speed", Address(), "0.5", "0.75"}).exitCode, 0);
  EXPECT_TRUE(mount.Saw("$MTAGS=0.500000,0.750000"));
  EXPECT_EQ(RunVelquinctl({"align-reset", Address()}).exitCode, 0);
  EXPECT_TRUE(mount.Saw("$ALINI=0"));
}

TEST_F(VelquinctlTest, SiteHandsOverPlaceAndTime) {
  const ProgramResult result =
      RunVelquinctl({"site", Address(), "--latitude", "-35.5", "--longitude", "-70.25", "--zone",
                     "-4", "--time", "2026-11-21T22:30:00", "--json"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_EQ(mount.Say("$SYLOC?"), "$SYLOC=-70.250,-35.500,-4");
  EXPECT_TRUE(mount.Saw("$SYLTM=2026,11,21,22,30,00.0"));
  const json site = Json(result);
  EXPECT_EQ(site["latitudeDegrees"], -35.5);
  EXPECT_EQ(site["zoneHours"], -4.0);
  EXPECT_EQ(site["localTime"], "2026-11-21T22:30:00.0");
}

TEST_F(VelquinctlTest, SiteKeepsUniversalTimeWhereZonesHaveHalfHours) {
  const ProgramResult result =
      RunVelquinctl({"site", Address(), "--latitude", "28.6", "--longitude", "77.2", "--zone",
                     "5.5", "--time", "2026-11-22T00:09:26"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(mount.Saw("$SYLTM=2026,11,21,23,39,00.0"));
  EXPECT_EQ(mount.Say("$SYLOC?"), "$SYLOC=77.200,28.600,5");
  EXPECT_THAT(result.out, HasSubstr("local time 2026-11-21 23:39:26, zone +5 h"));
}

// An acknowledgement may be a refusal; the driver keeps that to itself.
TEST(VelquinctlDeafMount, ASettingThatMayBeRefusedIsNotCalledAccepted) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  const ProgramResult result = RunVelquinctl({"align-reset", controller.Address()});
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_EQ(
      result.out,
      "alignment reset acknowledged; the driver does not tell whether the controller accepted "
      "that\n");
}

TEST_F(VelquinctlTest, SiteTakesTheMachinesClockByItself) {
  const ProgramResult result = RunVelquinctl(
      {"site", Address(), "--latitude", "35.5", "--longitude", "139.5", "--zone", "9"});
  EXPECT_EQ(result.exitCode, 0);
  // The controller learns whole minutes.
  const double mjdNow = 40587.0 + static_cast<double>(std::time(nullptr)) / 86400.0;
  EXPECT_NEAR(mount.Status()[0], mjdNow, 1.5 / 1440.0);
}

TEST_F(VelquinctlTest, IniGivesTheMeridianOverrides) {
  const TempFolder folder;
  WriteWholeFile(folder / L"mount.ini",
                 "[East]\r\n_OverrideMeridianStopPoint=5.5\r\n_OverrideMeridianGoto=2.25\r\n");
  const std::string file = (folder / L"mount.ini").string();
  const ProgramResult result = RunVelquinctl({"ini", Address(), file, "East"});
  EXPECT_EQ(result.exitCode, 0);
  EXPECT_TRUE(mount.Saw("$MTCOM=5.500000,2.250000"));
  EXPECT_THAT(result.out, HasSubstr("meridian stop point 5.5, meridian goto 2.25"));

  EXPECT_EQ(RunVelquinctl({"ini", Address(), file, "West"}).exitCode, 0);
  EXPECT_TRUE(mount.Saw("$MTCOM=0.000000,3.000000")) << "the section is missing";
}

TEST(VelquinctlDeafMount, TheJournalGoesWhereItIsAskedFor) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.IsSilentTo("$SYLOC?");
  const TempFolder folder;
  EXPECT_EQ(RunVelquinctl({"status", controller.Address(), "--log-path", folder.Path().string(),
                           "--log-prefix", "night"})
                .exitCode,
            0);
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(folder.Path()))
    names.push_back(entry.path().filename().string());
  EXPECT_THAT(names, testing::ElementsAre(StartsWith("night_timeouterr_korvelwireless_")));
}

TEST(VelquinctlDeafMount, NoJournalIsLeftUnlessOneIsAskedFor) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  controller.IsSilentTo("$SYLOC?");
  const TempFolder folder;
  VelquinctlRun run({"guide-speed", controller.Address(), "1", "1"}, folder.Wide());
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 0) << result.error;
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

// A journal that cannot be written proves nothing: what was acknowledged is then not known.
TEST(VelquinctlDeafMount, WithoutAFolderForItsJournalNothingIsClaimed) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  const TempFolder folder;
  VelquinctlRun run({"guide-speed", controller.Address(), "1", "1", "--timeout", "2"},
                    folder.Wide() + L"\\nowhere");
  const ProgramResult result = run.Wait();
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.error, HasSubstr("the driver's journal cannot be written"));
  EXPECT_THAT(result.error, Not(HasSubstr("did not acknowledge")));
}

}  // namespace
