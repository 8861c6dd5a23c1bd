// SPDX-License-Identifier: MIT
// Site, clock, meridian settings, alignment reset and pier side.
#include <ctime>
#include <limits>

#include "tests/library/engine/debug_output_capture.h"
#include "tests/library/engine/engine_fixture.h"
#include "tests/support/file_text.h"

namespace {

using simulator::Silence;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Ge;
using testing::IsEmpty;
using testing::Le;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const char* const kPosition = ",1,0,0,0,45.0,10,20,6.0,22.5,";
const char* const kReady = "4";
const char* const kNotReady = "2";

class SiteClock : public EngineTest {
 protected:
  // 2024-01-15 21:00 in Tokyo is noon in universal time, Modified Julian Date 60324.5.
  SiteTime time = {2024, 1, 15, 21, 0, 0.0, 9.0};
  SiteLocation location = {35.681, 139.767, 12.5};

  void ControllerIs(const char* mjd, const char* mode = kNotReady) {
    controller.Status(std::string(mjd) + kPosition + mode);
  }
  // Hands over site and clock. @return all that was sent for it, polls apart.
  std::vector<std::string> HandOff() {
    controller.Clear();
    EXPECT_EQ(telescope.BaseSetting(&time, &location), 1);
    EXPECT_TRUE(Idle());
    return Requests();
  }
  bool Initialised() { return controller.Saw("$MTINI=1"); }
};

// --- Hand-off ----------------------------------------------------------------------------------

TEST_F(SiteClock, HandsSiteAndClockOverAndReadsThemBack) {
  ControllerIs("60324.5");
  StartSession();
  EXPECT_THAT(HandOff(), ElementsAre("$SYLOC= 139.767, 35.681,9", "$SYLTM=2024,01,15,21,00,00.0",
                                     "$SYLOC?", "$SYUTM?"));
}

TEST_F(SiteClock, ReadsTheStatusFirst) {
  ControllerIs("60324.5");
  telescope.BaseSetting(&time, &location);
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(Idle());
  const std::vector<std::string> commands = controller.Commands();
  const auto site = std::find(commands.begin(), commands.end(), "$SYLOC= 139.767, 35.681,9");
  ASSERT_NE(site, commands.end());
  ASSERT_GE(site - commands.begin(), 2);
  EXPECT_EQ(site[-1], "$MTSTA?");
  EXPECT_EQ(site[-2], "$MTCOM=0.000000,3.000000") << "no poll was there before";
}

TEST_F(SiteClock, KeepsItsOwnCopyOfBothRecords) {
  telescope.BaseSetting(&time, &location);
  time = {};
  location = {};
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(Idle());
  EXPECT_THAT(Requests(), AllOf(Contains("$SYLOC= 139.767, 35.681,9"),
                                Contains("$SYLTM=2024,01,15,21,00,00.0")));
}

TEST_F(SiteClock, StampsTheMomentOfTheCall) {
  const int64_t before = std::time(nullptr);
  telescope.BaseSetting(&time, &location);
  EXPECT_THAT(probe.SiteTimeStamp(), AllOf(Ge(before), Le(std::time(nullptr))));
}

TEST_F(SiteClock, InitialisesTheMountAfterTheClockWhenTheyDiffer) {
  ControllerIs("60324.0");
  StartSession();
  EXPECT_THAT(HandOff(), ElementsAre("$SYLOC= 139.767, 35.681,9", "$SYLTM=2024,01,15,21,00,00.0",
                                     "$MTINI=1", "$SYLOC?", "$SYUTM?"));
}

TEST_F(SiteClock, InitialisesTheMountFromOneMinuteOn) {
  StartSession();
  // 59 s before and after the host's noon, then 60 s.
  for (const char* mjd : {"60324.49931713", "60324.50068287"}) {
    ControllerIs(mjd);
    HandOff();
    EXPECT_FALSE(Initialised()) << mjd;
  }
  for (const char* mjd : {"60324.49930555", "60324.50069445"}) {
    ControllerIs(mjd);
    HandOff();
    EXPECT_TRUE(Initialised()) << mjd;
  }
}

TEST_F(SiteClock, ComparesTheClocksInUniversalTimeToTheSecond) {
  StartSession();
  time = {2024, 1, 15, 7, 29, 45.0, -4.5};  // 11:59:45
  ControllerIs("60324.5");
  HandOff();
  EXPECT_FALSE(Initialised());
  time.minute = 28;
  time.second = 59.0;  // 11:58:59
  HandOff();
  EXPECT_TRUE(Initialised());
}

TEST_F(SiteClock, TakesAControllerWithoutAStatusForOneWithAnotherClock) {
  controller.Answers("$MTSTA?", "$WRONG=1");
  ASSERT_EQ(Connect(), 1);
  HandOff();
  EXPECT_TRUE(Initialised());
}

// What cannot be compared is not known to be the same.
TEST_F(SiteClock, TakesAClockThatIsNoNumberForAnother) {
  StartSession();
  ControllerIs("nan");
  HandOff();
  EXPECT_TRUE(Initialised()) << "the controller's";
  ControllerIs("60324.5");
  HandOff();
  ASSERT_FALSE(Initialised());
  time.second = std::numeric_limits<double>::quiet_NaN();
  HandOff();
  EXPECT_TRUE(Initialised()) << "the host's";
}

TEST_F(SiteClock, CutsTheZoneToWholeHours) {
  StartSession();
  time.zone = -4.5;
  EXPECT_THAT(HandOff(), Contains("$SYLOC= 139.767, 35.681,-4"));
  time.zone = 5.75;
  EXPECT_THAT(HandOff(), Contains("$SYLOC= 139.767, 35.681,5"));
}

TEST_F(SiteClock, SendsSouthAndWestWithTheirSigns) {
  StartSession();
  location = {-33.9, -70.25, 0.0};
  EXPECT_THAT(HandOff(), Contains("$SYLOC= -70.250,-33.900,9"));
}

TEST_F(SiteClock, UnparksAMountThatIsReady) {
  ControllerIs("60324.5", kReady);
  StartSession();
  EXPECT_THAT(HandOff(), ElementsAre("$SYLOC= 139.767, 35.681,9", "$SYLTM=2024,01,15,21,00,00.0",
                                     "$SYLOC?", "$SYUTM?", "$MTTGT=3,6.000000,22.500000,Star"));
}

TEST_F(SiteClock, UnparksByTheStatusThatItReadsItself) {
  ControllerIs("60324.5", kReady);
  telescope.BaseSetting(&time, &location);  // before any poll
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(Idle());
  EXPECT_TRUE(controller.Saw("$MTTGT=3,6.000000,22.500000,Star"));
}

TEST_F(SiteClock, UnparksBehindAllThatWaits) {
  const double crab[2] = {83.633, 22.0145};
  ControllerIs("60324.5", kReady);
  telescope.BaseSetting(&time, &location);
  telescope.Look(crab);
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=3,6.000000,22.500000,Star", kSoonMs));
  std::vector<std::string> targets = Requests();
  std::erase_if(targets, [](const std::string& line) { return !line.starts_with("$MTTGT="); });
  EXPECT_THAT(targets,
              ElementsAre("$MTTGT=3,5.575533,22.014500,", "$MTTGT=3,6.000000,22.500000,Star"));
}

TEST_F(SiteClock, DoesNotUnparkAMountThatRefusedTheSite) {
  ControllerIs("60324.5", kReady);
  controller.Answers("$SYLOC=", "$ERROR=1");
  StartSession();
  EXPECT_THAT(HandOff(), Not(Contains(StartsWith("$MTTGT"))));
}

TEST_F(SiteClock, DoesNotUnparkAMountThatIsNotReady) {
  ControllerIs("60324.5", kNotReady);
  StartSession();
  EXPECT_THAT(HandOff(), Not(Contains(StartsWith("$MTTGT"))));
}

TEST_F(SiteClock, SendsTheClockThoughTheSiteFailedAndTellsTheDebuggerOfBoth) {
  controller.Answers("$SYLOC=", "$ERROR=1");
  controller.Answers("$SYLTM=", "$ERROR=1");
  StartSession();
  DebugOutputCapture output;
  EXPECT_THAT(HandOff(), AllOf(Contains("$SYLOC= 139.767, 35.681,9"),
                               Contains("$SYLTM=2024,01,15,21,00,00.0"), Contains("$SYLOC?")));
  EXPECT_EQ(output.Take(), "err send location\nerr send date\n");
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(SiteClock, TellsTheDebuggerOfTheOneThatFailed) {
  controller.Answers("$SYLTM=", "$ERROR=1");
  StartSession();
  DebugOutputCapture output;
  HandOff();
  EXPECT_EQ(output.Take(), "err send date\n");
}

TEST_F(SiteClock, TellsTheDebuggerNothingWhenAllIsWell) {
  StartSession();
  DebugOutputCapture output;
  HandOff();
  EXPECT_EQ(output.Take(), "");
}

// --- The hand-off's status -----------------------------------------------------------------------

class HandOffStatus : public SiteClock {
 protected:
  // Hands over in a session's first cycle. The worker stays in it, for the goto that follows has no
  // target, and the user does not answer: no poll has been there.
  void HandOffBeforeAnyPoll() {
    app.Hold();
    telescope.BaseSetting(&time, &location);
    telescope.Look(nullptr);
    ASSERT_EQ(Connect(), 1);
    ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
    ASSERT_EQ(controller.CountOf("$MTSTA?"), 1);
  }
};

TEST_F(HandOffStatus, IsPublishedAsThatOfAPoll) {
  controller.Status("60324.5,2,0,0,0,90.1,10,20,6.0,22.5,4");
  HandOffBeforeAnyPoll();
  double radec[2] = {};
  EXPECT_EQ(telescope.GetPos(radec), 1);
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(telescope.GetSlewing(), 1);
  EXPECT_EQ(telescope.GetParking(), 1);
  EXPECT_EQ(telescope.GetEastWest(), 1);
}

TEST_F(HandOffStatus, EndsARowOfFailedPolls) {
  for (int failed = 0; failed < 11; ++failed) telescope.OnPoll();  // no link
  ASSERT_EQ(probe.FailedPolls(), 11);
  HandOffBeforeAnyPoll();
  EXPECT_EQ(probe.FailedPolls(), 0);
}

TEST_F(HandOffStatus, CountsAsAFailedPollWhenItIsNone) {
  controller.Answers("$MTSTA?", "$WRONG=1");
  HandOffBeforeAnyPoll();
  EXPECT_EQ(probe.FailedPolls(), 1);
}

// --- Readout -----------------------------------------------------------------------------------

TEST_F(SiteClock, HasEmptyTextsBeforeTheFirstReadout) {
  EXPECT_STREQ(telescope.GetVersionText(), "");
  EXPECT_STREQ(telescope.GetDateText(), "");
  EXPECT_STREQ(telescope.GetTimeText(), "");
  EXPECT_STREQ(telescope.GetZoneText(), "");
  EXPECT_STREQ(telescope.GetSiteTextA(), "");
  EXPECT_STREQ(telescope.GetSiteTextB(), "");
}

TEST_F(SiteClock, ReadsTheControllersOwnSiteAndClockWhenItConnects) {
  controller.Answers("$SYLOC?", "$SYLOC=139.767,-35.681,-4");
  controller.Answers("$SYUTM?", "$SYUTM=2024,1,2,3,4,5.9");
  StartSession();
  EXPECT_STREQ(telescope.GetDateText(), "2024/1/2");
  EXPECT_STREQ(telescope.GetTimeText(), "3:4:5");
  EXPECT_STREQ(telescope.GetZoneText(), "-4");
  EXPECT_STREQ(telescope.GetSiteTextA(), "139.767000");
  EXPECT_STREQ(telescope.GetSiteTextB(), "-35.681000");
  EXPECT_STREQ(telescope.GetBlankText(), "");
  EXPECT_STREQ(telescope.GetSpareText1(), "");
  EXPECT_STREQ(telescope.GetSpareText2(), "");
  EXPECT_STREQ(telescope.GetSpareText3(), "");
}

TEST_F(SiteClock, ReadsThemAnewAfterAHandOff) {
  StartSession();
  controller.Answers("$SYLOC?", "$SYLOC=1.5,2.5,3");
  controller.Answers("$SYUTM?", "$SYUTM=2025,12,31,23,59,58");
  HandOff();
  EXPECT_STREQ(telescope.GetDateText(), "2025/12/31");
  EXPECT_STREQ(telescope.GetTimeText(), "23:59:58");
  EXPECT_STREQ(telescope.GetZoneText(), "3");
  EXPECT_STREQ(telescope.GetSiteTextA(), "1.500000");
  EXPECT_STREQ(telescope.GetSiteTextB(), "2.500000");
}

TEST_F(SiteClock, DoesNotAskForTheClockWhenTheSiteCannotBeRead) {
  StartSession();
  controller.Answers("$SYLOC?", "$SYLOC=1.5,2.5,3,4");
  EXPECT_THAT(HandOff(), AllOf(Contains("$SYLOC?"), Not(Contains("$SYUTM?"))));
  EXPECT_STREQ(telescope.GetSiteTextA(), "139.767000");
  EXPECT_STREQ(telescope.GetDateText(), "2024/1/2");
}

TEST_F(SiteClock, KeepsAllTextsWhenTheClockCannotBeRead) {
  StartSession();
  controller.Answers("$SYLOC?", "$SYLOC=1.5,2.5,3");
  controller.Answers("$SYUTM?", "$SYUTM=2025,12,31");
  HandOff();
  EXPECT_STREQ(telescope.GetSiteTextA(), "139.767000");
  EXPECT_STREQ(telescope.GetZoneText(), "9");
  EXPECT_STREQ(telescope.GetTimeText(), "3:4:5");
}

// --- Meridian settings -------------------------------------------------------------------------

class Meridian : public SiteClock {
 protected:
  // What is sent at a start with this INI file.
  std::string SentWith(const std::string& file, const std::string& section) {
    telescope.End();
    controller.Clear();
    telescope.SetIni(file.c_str(), section.c_str());
    EXPECT_EQ(Connect(), 1);
    for (const std::string& command : controller.Commands()) {
      if (command.starts_with("$MTCOM=")) return command;
    }
    return "nothing";
  }
  std::string SentWith(const std::string& text) {
    WriteWholeFile(folder / "host.ini", text);
    return SentWith(folder.Narrow("host.ini"), "Mount");
  }
};

TEST_F(Meridian, AreTheDefaultsWithoutAnIniFile) {
  ASSERT_EQ(Connect(), 1);
  EXPECT_EQ(controller.CountOf("$MTCOM=0.000000,3.000000"), 1);
}

TEST_F(Meridian, AreTheDefaultsWhenFileSectionOrKeysAreMissing) {
  EXPECT_EQ(SentWith(folder.Narrow("none.ini"), "Mount"), "$MTCOM=0.000000,3.000000");
  EXPECT_EQ(SentWith("[Other]\r\n_OverrideMeridianGoto=9\r\n"), "$MTCOM=0.000000,3.000000");
  EXPECT_EQ(SentWith("[Mount]\r\nOther=9\r\n"), "$MTCOM=0.000000,3.000000");
}

TEST_F(Meridian, ComeFromTheIniFileStopPointFirst) {
  EXPECT_EQ(SentWith("[Mount]\r\n"
                     "_OverrideMeridianGoto=-2.25\r\n"
                     "_OverrideMeridianStopPoint=1.5\r\n"),
            "$MTCOM=1.500000,-2.250000");
}

TEST_F(Meridian, MayBeOverriddenOneByOne) {
  EXPECT_EQ(SentWith("[Mount]\r\n_OverrideMeridianStopPoint=10\r\n"), "$MTCOM=10.000000,3.000000");
  EXPECT_EQ(SentWith("[Mount]\r\n_OverrideMeridianGoto=10\r\n"), "$MTCOM=0.000000,10.000000");
}

TEST_F(Meridian, AreNumbersAsTheRuntimeReadsThem) {
  EXPECT_EQ(SentWith("[Mount]\r\n"
                     "_OverrideMeridianStopPoint=-1.5e1 minutes\r\n"
                     "_OverrideMeridianGoto=none\r\n"),
            "$MTCOM=-15.000000,0.000000");
}

TEST_F(Meridian, AreReadFromTheFirst127Characters) {
  const std::string zeros(126, '0');
  EXPECT_EQ(SentWith("[Mount]\r\n_OverrideMeridianStopPoint=" + zeros +
                     "12\r\n_OverrideMeridianGoto=" + zeros + "34\r\n"),
            "$MTCOM=1.000000,3.000000");
}

TEST_F(Meridian, AreReadAtEveryStart) {
  EXPECT_EQ(SentWith("[Mount]\r\n_OverrideMeridianGoto=1\r\n"), "$MTCOM=0.000000,1.000000");
  WriteWholeFile(folder / "host.ini", "[Mount]\r\n_OverrideMeridianGoto=2\r\n");
  telescope.End();
  ASSERT_EQ(Connect(), 1);
  EXPECT_TRUE(controller.Saw("$MTCOM=0.000000,2.000000"));
}

// --- Alignment reset and pier side -------------------------------------------------------------

TEST_F(SiteClock, DropsTheAlignment) {
  StartSession();
  EXPECT_EQ(telescope.AlignReset(), 1);
  ASSERT_TRUE(Idle());
  EXPECT_THAT(Requests(), ElementsAre("$ALINI=0"));
}

TEST_F(SiteClock, KnowsThePierSideOnlyAfterAPoll) {
  EXPECT_EQ(telescope.GetEastWest(), 0);
  EXPECT_EQ(telescope.SetEastWest(5), 1);
  EXPECT_EQ(probe.StoredEastWest(), 5);
  EXPECT_EQ(telescope.GetEastWest(), 0) << "what the host sets is not handed back";
  EXPECT_EQ(probe.StoredEastWest(), 0);
}

TEST_F(SiteClock, TellsThePierSideFromTheAxisAngle) {
  controller.Status("60000.5,1,0,0,0,90.0,10,20,6.0,22.5,4");
  StartSession();
  EXPECT_EQ(telescope.GetEastWest(), -1);
  EXPECT_EQ(probe.StoredEastWest(), -1);
  controller.Status("60000.5,1,0,0,0,90.1,10,20,6.0,22.5,4");
  ASSERT_TRUE(PollsAgain());
  EXPECT_EQ(telescope.GetEastWest(), 1);
  EXPECT_EQ(probe.StoredEastWest(), 1);
}

TEST_F(SiteClock, SendsNothingForThePierSide) {
  StartSession();
  telescope.SetEastWest(1);
  telescope.GetEastWest();
  ASSERT_TRUE(PollsAgain());
  EXPECT_THAT(Requests(), IsEmpty());
}

}  // namespace
