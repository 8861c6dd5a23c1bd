// SPDX-License-Identifier: MIT
// Every export: what it answers and what it puts on the wire.
#include <atomic>
#include <filesystem>
#include <thread>

#include "tests/library/dll/driver_fixture.h"
#include "tests/support/file_text.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

constexpr double kCrab[2] = {83.633, 22.0145};
const char* const kNoMove = "$MTMV2=1.000000,0.000000,0.000000\r\n";

class Exports : public DriverTest {};

// --- Texts -------------------------------------------------------------------------------------

TEST_F(Exports, StoreTextsAtAnyTime) {
  EXPECT_EQ(driver.SetName(nullptr, "Scope"), 1);
  EXPECT_EQ(driver.SetVendor(nullptr, "Vendor"), 1);
  EXPECT_EQ(driver.SetIni(nullptr, "none.ini", "Mount"), 1);
  EXPECT_EQ(driver.SetLogPath(nullptr, ".\\"), 1);
  EXPECT_EQ(driver.SetLogPrefix(nullptr, "prefix"), 1);
  EXPECT_EQ(driver.SetName(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetVendor(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetIni(nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetLogPath(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetLogPrefix(nullptr, nullptr), 1);
  EXPECT_EQ(Start(), 1);
}

TEST_F(Exports, ReadTheMeridianSettingsFromTheHostsIniFile) {
  WriteWholeFile(folder / "host.ini",
                 "[Mount]\r\n_OverrideMeridianStopPoint=1.5\r\n_OverrideMeridianGoto=-2\r\n");
  driver.SetIni(nullptr, folder.Narrow("host.ini").c_str(), "Mount");
  ASSERT_EQ(Start(), 1);
  EXPECT_THAT(Requests(), Contains("$MTCOM=1.500000,-2.000000\r\n"));
}

TEST_F(Exports, WriteTheJournalWhereTheHostWantsIt) {
  // A path with Japanese letters, in the narrow code page as a host hands it over.
  const std::filesystem::path japanese = folder / L"望遠鏡 ソ";
  std::filesystem::create_directory(japanese);
  driver.SetLogPath(nullptr, (TempFolder::NarrowPath(japanese) + "\\").c_str());
  driver.SetLogPrefix(nullptr, "scope1");
  controller.IsSilentTo("$ALINI=0");
  StartSession();
  driver.AlignReset(nullptr);
  driver.Home(nullptr);
  EXPECT_THAT(Sent(), SizeIs(2));
  driver.End(nullptr);
  std::vector<std::filesystem::path> files;
  for (const auto& entry : std::filesystem::directory_iterator(japanese)) {
    files.push_back(entry.path());
  }
  ASSERT_THAT(files, SizeIs(1));
  EXPECT_THAT(
      files[0].filename().string(),
      MatchesRegex("scope1_timeouterr_korvelwireless_20\\d\\d\\d\\d\\d\\d_\\d\\d\\d\\d\\d\\d.txt"));
  EXPECT_THAT(ReadWholeFile(files[0]).value_or(""),
              MatchesRegex("\\d\\d:\\d\\d:\\d\\d .ALINI=0 : TimeOut\r\n"));
}

// --- State -------------------------------------------------------------------------------------

TEST_F(Exports, KnowNothingBeforeTheFirstSession) {
  double radec[2] = {7.0, 7.0};
  EXPECT_EQ(driver.GetPos(nullptr, radec), 0);
  EXPECT_THAT(radec, ElementsAre(-1.0, -1.0));
  EXPECT_EQ(driver.GetPos(nullptr, nullptr), 0);
  EXPECT_EQ(driver.GetParking(nullptr), 1);
  EXPECT_EQ(driver.GetEastWest(nullptr), -1);
  EXPECT_EQ(driver.GetStatus(nullptr), 1);
  EXPECT_EQ(driver.GetSlewSpeedMax(nullptr), 9);
}

// From the first failed poll to well past those that count as a lost link.
TEST_F(Exports, KnowNothingInASessionWhosePollsHaveAllFailed) {
  controller.Answers("$MTSTA?", "$SYVER=1.00");
  ASSERT_EQ(Start(), 1);
  for (int polls = 1; polls <= 15; ++polls) {
    ASSERT_TRUE(controller.WaitForCount("$MTSTA?", polls, kSoonMs));
    double radec[2] = {7.0, 7.0};
    EXPECT_EQ(driver.GetPos(nullptr, radec), 0) << polls;
    EXPECT_THAT(radec, ElementsAre(-1.0, -1.0)) << polls;
    EXPECT_EQ(driver.GetEastWest(nullptr), -1) << polls;
    EXPECT_EQ(driver.GetParking(nullptr), 1) << polls;
  }
  controller.LooksLikeAMount();
  double radec[2] = {};
  EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon));
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(driver.GetEastWest(nullptr), 0);
}

TEST_F(Exports, TellWhatTheLastPollSaid) {
  controller.Status("60000.5,1,0,0,0,90.0,10,20,6.0,-22.5,4");
  StartSession();
  double radec[2] = {};
  EXPECT_EQ(driver.GetPos(nullptr, radec), 1);
  EXPECT_THAT(radec, ElementsAre(90.0, -22.5));
  EXPECT_EQ(driver.GetPos(nullptr, nullptr), 0);
  EXPECT_EQ(driver.GetParking(nullptr), 0);
  EXPECT_EQ(driver.GetEastWest(nullptr), 0);
  EXPECT_EQ(driver.GetStatus(nullptr), 1);
  EXPECT_EQ(driver.GetSlewSpeedMax(nullptr), 9);

  controller.Status("60000.5,3,0,0,0,90.1,10,20,6.0,-22.5,4");
  ASSERT_TRUE(PollsAgain());
  EXPECT_EQ(driver.GetParking(nullptr), 1);
  EXPECT_EQ(driver.GetEastWest(nullptr), 1);
  EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(Exports, StoreAPierSideWithoutAnEffect) {
  EXPECT_EQ(driver.SetEastWest(nullptr, 1), 1);
  EXPECT_EQ(driver.GetEastWest(nullptr), -1);
  StartSession();
  EXPECT_EQ(driver.SetEastWest(nullptr, 1), 1);
  EXPECT_EQ(driver.GetEastWest(nullptr), 0);
  EXPECT_THAT(Sent(), IsEmpty());
}

// --- Site and clock ----------------------------------------------------------------------------

TEST_F(Exports, HandOverSiteAndClock) {
  controller.Status("60324.5,1,0,0,0,45.0,10,20,6.0,22.5,4");
  StartSession();
  const SiteTime time = {2024, 1, 15, 21, 7, 59.96, 9.0};
  const SiteLocation location = {-33.9, 151.2, 5.0};
  EXPECT_EQ(driver.BaseSetting(nullptr, &time, &location), 1);
  ASSERT_TRUE(controller.WaitFor("$SYUTM?", kSoonMs));
  EXPECT_THAT(Sent(), ElementsAre("$SYLOC= 151.200,-33.900,9\r\n",
                                  "$SYLTM=2024,01,15,21,08,00.0\r\n", "$MTINI=1\r\n", "$SYLOC?\r\n",
                                  "$SYUTM?\r\n", "$MTTGT=3,6.000000,22.500000,Star\r\n"));
}

TEST_F(Exports, LeaveSiteAndClockAsTheyAreForNull) {
  StartSession();
  const SiteTime time = {2024, 1, 15, 21, 7, 0.0, 9.0};
  const SiteLocation location = {1.0, 2.0, 3.0};
  EXPECT_EQ(driver.BaseSetting(nullptr, nullptr, &location), 1);
  EXPECT_EQ(driver.BaseSetting(nullptr, &time, nullptr), 1);
  EXPECT_THAT(Sent(), IsEmpty());
}

TEST_F(Exports, DropTheAlignment) {
  StartSession();
  EXPECT_EQ(driver.AlignReset(nullptr), 1);
  EXPECT_THAT(Sent(), ElementsAre("$ALINI=0\r\n"));
}

// --- Motion ------------------------------------------------------------------------------------

TEST_F(Exports, GoToAndSynchroniseOnTargets) {
  StartSession();
  EXPECT_EQ(driver.SetPos(nullptr, kCrab), 1);
  EXPECT_EQ(driver.SetPos(nullptr, nullptr), 1);
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_EQ(driver.Look(nullptr, nullptr), 1);
  EXPECT_EQ(driver.Sync(nullptr, nullptr), 1);
  EXPECT_THAT(Sent(),
              ElementsAre("$MTTGT=3,5.575533,22.014500,\r\n", "$ALIGN=3,5.575533,22.014500,\r\n"));

  controller.Clear();
  const double south[2] = {359.9999, -5.25};
  EXPECT_EQ(driver.Look(nullptr, south), 1);
  EXPECT_EQ(driver.Sync(nullptr, south), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=3,23.999993,-5.250000,\r\n",
                                  "$ALIGN=3,23.999993,-5.250000,\r\n"));
}

TEST_F(Exports, HaveOneTargetForGotoAndSync) {
  const double first[2] = {15.0, 10.0};
  const double second[2] = {30.0, 20.0};
  driver.Look(nullptr, first);
  driver.Sync(nullptr, second);
  driver.SetPos(nullptr, kCrab);
  EXPECT_THAT(SentByANewSession(),
              ElementsAre("$MTTGT=3,5.575533,22.014500,\r\n", "$ALIGN=3,5.575533,22.014500,\r\n"));
}

// What lets the mount track is queued when site and clock have been sent, behind a goto that came
// in between.
TEST_F(Exports, UndoAGotoThatComesDirectlyAfterSiteAndClock) {
  const SiteTime time = {2024, 1, 15, 21, 7, 0.0, 9.0};
  const SiteLocation location = {1.0, 2.0, 3.0};
  driver.BaseSetting(nullptr, &time, &location);
  driver.Look(nullptr, kCrab);
  ASSERT_EQ(Start(), 1);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=3,6.000000,22.500000,Star", kSoonMs));
  std::vector<std::string> gotos;
  for (const std::string& command : controller.Commands()) {
    if (command.starts_with("$MTTGT=")) gotos.push_back(command);
  }
  EXPECT_THAT(gotos,
              ElementsAre("$MTTGT=3,5.575533,22.014500,", "$MTTGT=3,6.000000,22.500000,Star"));
}

TEST_F(Exports, DoNothingForASyncWithoutATarget) {
  StartSession();
  EXPECT_EQ(driver.Sync(nullptr, nullptr), 1);
  EXPECT_THAT(Sent(), IsEmpty());
  EXPECT_FALSE(FindMessageBox());
}

TEST_F(Exports, StopWithTwoDatagrams) {
  StartSession();
  EXPECT_EQ(driver.Stop(nullptr), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTSTP=1\r\n", kNoMove));
}

TEST_F(Exports, OvertakeAllThatWaitsWithAStop) {
  driver.Look(nullptr, kCrab);
  driver.Sync(nullptr, nullptr);
  driver.Home(nullptr);
  driver.Park(nullptr);
  driver.UnPark(nullptr);
  driver.Stop(nullptr);
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTSTP=1\r\n", kNoMove));
}

TEST_F(Exports, GoHomeParkAndUnpark) {
  StartSession();
  EXPECT_EQ(driver.Home(nullptr), 1);
  EXPECT_EQ(driver.Park(nullptr), 1);
  EXPECT_EQ(driver.UnPark(nullptr), 1);
  EXPECT_THAT(Sent(), ElementsAre("$MTTGT=1,270.000000,0.000000,Home\r\n",
                                  "$MTTGT=2,10.000000,20.000000,Park\r\n",
                                  "$MTTGT=3,6.000000,22.500000,Star\r\n"));
}

TEST_F(Exports, MoveByHand) {
  const struct {
    int32_t direction;
    int32_t speed;
    const char* datagram;
  } moves[] = {
      {1, 1, "$MTMV2=1.000000,0.000000,25.500000\r\n"},
      {2, 9, "$MTMV2=1.000000,0.000000,-200.000000\r\n"},
      {3, 3, "$MTMV2=1.000000,75.500000,0.000000\r\n"},
      {4, 0, "$MTMV2=1.000000,-0.500000,0.000000\r\n"},
      {5, 1, kNoMove},
  };
  StartSession();
  for (const auto& move : moves) {
    controller.Clear();
    EXPECT_EQ(driver.Slew(nullptr, move.direction, 1, move.speed), 1);
    EXPECT_TRUE(controller.WaitFor("$MTMV2=", kSoonMs));
    EXPECT_EQ(driver.Slew(nullptr, move.direction, 0, move.speed), 1);
    EXPECT_THAT(Sent(), ElementsAre(move.datagram)) << move.direction;
  }
}

TEST_F(Exports, SendGuidePulses) {
  driver.SlewPulseDuration(nullptr, 20, 30, 250, 0, 0.5, 0.25);
  EXPECT_THAT(SentByANewSession(), ElementsAre("$MTMV2=0.020000,0.000000,0.250000\r\n",
                                               "$MTMV2=0.030000,0.000000,-0.250000\r\n",
                                               "$MTMV2=0.250000,-0.500000,0.000000\r\n"));
  // The pause after the long one is kept as well.
  double times[2] = {};
  for (const auto& datagram : controller.Received()) {
    if (datagram.text == "$MTMV2=0.250000,-0.500000,0.000000") times[0] = datagram.timeMs;
    if (datagram.text.starts_with("$MTAGS=")) times[1] = datagram.timeMs;
  }
  EXPECT_GE(times[1] - times[0], 299.0);
}

TEST_F(Exports, SetTheGuideSpeed) {
  StartSession();
  EXPECT_EQ(driver.SetGuideSpeed(nullptr, 0.5, 0.75), 1);
  ASSERT_TRUE(controller.WaitFor("$MTAGS=", kSoonMs));
  EXPECT_THAT(Requests(), ElementsAre("$MTAGS=0.500000,0.750000\r\n"));
}

// --- Threads -----------------------------------------------------------------------------------

TEST_F(Exports, MayBeCalledByFourThreadsAtOnce) {
  StartSession();
  const SiteTime time = {2024, 1, 15, 21, 7, 0.0, 9.0};
  const SiteLocation location = {1.0, 2.0, 3.0};
  std::atomic<bool> stopping = false;
  std::atomic<int> failures = 0;
  const auto callAll = [&] {
    char version[8];
    double radec[2];
    while (!stopping) {
      failures += driver.GetPos(nullptr, radec) != 1 || radec[1] != 22.5;
      failures += driver.SetName(nullptr, "Scope") != 1 || driver.SetVendor(nullptr, "Me") != 1;
      failures += driver.Look(nullptr, kCrab) != 1 || driver.Sync(nullptr, nullptr) != 1;
      failures += driver.Slew(nullptr, TELESCOPE_SOUTH, 1, 3) != 1 ||
                  driver.Slew(nullptr, TELESCOPE_SOUTH, 0, 3) != 1;
      failures += driver.BaseSetting(nullptr, &time, &location) != 1;
      failures += driver.GetEastWest(nullptr) != 0 || driver.GetParking(nullptr) != 0;
      failures += driver.SetIni(nullptr, "none.ini", "Mount") != 1;
      failures += driver.Start(nullptr, "127.13.1.1", nullptr, 0) != 0;
      failures += driver.Check(nullptr, "127.13.1.1", nullptr, version, 8, nullptr, 0) != 1;
      failures += driver.Stop(nullptr) != 1;
    }
  };
  std::vector<std::thread> callers;
  for (int i = 0; i < 4; ++i) callers.emplace_back(callAll);
  for (int i = 0; i < 5; ++i) EXPECT_TRUE(PollsAgain());
  stopping = true;
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(failures, 0);
  EXPECT_FALSE(FindMessageBox());
  driver.Stop(nullptr);
  EXPECT_EQ(driver.End(nullptr), 1);
}

// --- Window ------------------------------------------------------------------------------------

TEST_F(Exports, ShowTheHandControllerAndCloseIt) {
  const auto find = [] { return FindWindowW(L"#32770", L"Scope of the export test"); };
  driver.SetName(nullptr, "Scope of the export test");
  EXPECT_EQ(driver.Dialog(nullptr, 1), 1);
  const HWND first = find();
  EXPECT_NE(first, nullptr);
  EXPECT_EQ(driver.Dialog(nullptr, -1), 1);
  EXPECT_FALSE(IsWindow(first)) << "the window that was open is replaced";
  EXPECT_NE(find(), nullptr);
  EXPECT_EQ(driver.Dialog(nullptr, 0), 1);
  EXPECT_EQ(find(), nullptr);
  EXPECT_EQ(driver.Dialog(nullptr, 0), 1);
}

}  // namespace
