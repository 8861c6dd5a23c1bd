// SPDX-License-Identifier: MIT
// Every export of the built library: its result and what it puts on the wire.
#include "tests/dll/driver_fixture.h"
#include "tests/support/file_text.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class Exports : public DriverTest {
 protected:
  /// Sends one request and waits until the worker has performed it.
  template <typename Request>
  std::vector<std::string> Sent(const std::string& lastCommand, Request request) {
    controller.Clear();
    EXPECT_EQ(request(), 1);
    EXPECT_TRUE(controller.WaitFor(lastCommand, kSoonMs));
    return Requests();
  }
  void StatusIs(const std::string& values) {
    controller.Status(values);
    ASSERT_TRUE(PollsAgain());
    ASSERT_TRUE(PollsAgain());
  }
};

TEST_F(Exports, SendTheirCommands) {
  StartSession();
  const double target[2] = {83.633, -5.25};
  EXPECT_THAT(Sent("$MTTGT=", [&] { return driver.Look(nullptr, target); }),
              ElementsAre("$MTTGT=3,5.575533,-5.250000,"));
  EXPECT_THAT(Sent("$ALIGN=", [&] { return driver.Sync(nullptr, target); }),
              ElementsAre("$ALIGN=3,5.575533,-5.250000,"));
  EXPECT_THAT(Sent("$MTMV2=", [&] { return driver.Stop(nullptr); }),
              ElementsAre("$MTSTP=1", "$MTMV2=1.000000,0.000000,0.000000"));
  EXPECT_THAT(Sent("$MTTGT=", [&] { return driver.Home(nullptr); }),
              ElementsAre("$MTTGT=1,270.000000,0.000000,Home"));
  EXPECT_THAT(Sent("$MTAGS=", [&] { return driver.SetGuideSpeed(nullptr, 0.5, 0.25); }),
              ElementsAre("$MTAGS=0.500000,0.250000"));
  EXPECT_THAT(Sent("$ALINI=", [&] { return driver.AlignReset(nullptr); }), ElementsAre("$ALINI=0"));
  EXPECT_THAT(Sent("$MTMV2=", [&] { return driver.Slew(nullptr, 1, 1, 1); }),
              ElementsAre("$MTMV2=1.000000,0.000000,25.500000"));
}

TEST_F(Exports, ParkAndUnparkGoWhereTheStatusSays) {
  StartSession();
  StatusIs("60310.5,1,0,0,0,45.0,11.5,-22.25,6.0,22.5,4");
  EXPECT_THAT(Sent("$MTTGT=", [&] { return driver.Park(nullptr); }),
              ElementsAre("$MTTGT=2,11.500000,-22.250000,Park"));
  EXPECT_THAT(Sent("$MTTGT=", [&] { return driver.UnPark(nullptr); }),
              ElementsAre("$MTTGT=3,6.000000,22.500000,Star"));
}

TEST_F(Exports, HandMovesAndPulsesSignEastOppositely) {
  StartSession();
  EXPECT_THAT(Sent("$MTMV2=", [&] { return driver.Slew(nullptr, 3, 1, 9); }),
              ElementsAre("$MTMV2=1.000000,200.000000,0.000000"));
  EXPECT_THAT(
      Sent("$MTMV2=", [&] { return driver.SlewPulseDuration(nullptr, 0, -1, 250, 0, 0.5, 1.0); }),
      ElementsAre("$MTMV2=0.250000,-0.500000,0.000000"));
}

TEST_F(Exports, PulsesRunInOrderWithNothingBetween) {
  StartSession();
  driver.SlewPulseDuration(nullptr, 20, 20, 20, 20, 0.5, 0.75);
  ASSERT_TRUE(controller.WaitForCount("$MTMV2=", 4, kSoonMs));
  const std::vector<std::string> commands = controller.Commands();
  const auto first = std::find_if(commands.begin(), commands.end(), [](const std::string& text) {
    return text.rfind("$MTMV2=", 0) == 0;
  });
  ASSERT_GE(commands.end() - first, 4);
  EXPECT_THAT(
      std::vector<std::string>(first, first + 4),
      ElementsAre("$MTMV2=0.020000,0.000000,0.750000", "$MTMV2=0.020000,0.000000,-0.750000",
                  "$MTMV2=0.020000,-0.500000,0.000000", "$MTMV2=0.020000,0.500000,0.000000"));
}

TEST_F(Exports, HandOffSendsSiteAndClockUnparksAndReadsBack) {
  StartSession();
  const SiteTime time = {2024, 3, 5, 21, 7, 9.0, 9.0};
  const SiteLocation location = {35.681, 139.767, 40.0};
  EXPECT_EQ(driver.BaseSetting(nullptr, &time, &location), 1);
  ASSERT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
  EXPECT_THAT(Requests(),
              ElementsAre("$SYLOC= 139.767, 35.681,9", "$SYLTM=2024,03,05,21,07,00.0", "$MTINI=1",
                          "$SYLOC?", "$SYUTM?", testing::StartsWith("$MTTGT=3,")));
}

TEST_F(Exports, TakeTheMeridianOverridesFromTheHostsFile) {
  TempFolder folder;
  WriteWholeFile(folder / "host.ini",
                 "[Mount]\r\n_OverrideMeridianStopPoint=1.5\r\n_OverrideMeridianGoto=2.25\r\n");
  EXPECT_EQ(driver.SetIni(nullptr, folder.Narrow("host.ini").c_str(), "Mount"), 1);
  ASSERT_EQ(Connect(), 1);
  EXPECT_TRUE(controller.Saw("$MTCOM=1.500000,2.250000"));
  driver.SetIni(nullptr, "", "");
}

TEST_F(Exports, AnswerFromTheLastStatus) {
  double radec[2] = {};
  StartSession();
  StatusIs("60310.5,1,0,0,0,90.0,0,0,6.0,-22.5,4");
  EXPECT_EQ(driver.GetPos(nullptr, radec), 1);
  EXPECT_EQ(radec[0], 90.0);
  EXPECT_EQ(radec[1], -22.5);
  EXPECT_EQ(driver.GetEastWest(nullptr), 0);
  EXPECT_EQ(driver.GetParking(nullptr), 0);
  StatusIs("60310.5,3,0,0,0,90.1,0,0,6.0,-22.5,4");
  EXPECT_EQ(driver.GetEastWest(nullptr), 1);
  EXPECT_EQ(driver.GetParking(nullptr), 1);
  EXPECT_EQ(driver.GetStatus(nullptr), 1);
  EXPECT_EQ(driver.GetSlewSpeedMax(nullptr), 9);
  EXPECT_EQ(driver.SetEastWest(nullptr, 5), 1);
  EXPECT_EQ(driver.GetEastWest(nullptr), 1);
}

TEST_F(Exports, ElevenLostPollsMakeThePositionInvalidUntilAGoodOne) {
  StartSession();
  StatusIs("60310.5,1,0,0,0,45.0,0,0,6.0,22.5,4");
  controller.Answers("$MTSTA?", "$SYVER=1.00");
  double radec[2] = {};
  ASSERT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 0; }, kSoon));
  EXPECT_EQ(radec[0], 90.0);
  controller.Status("60310.5,1,0,0,0,45.0,0,0,7.0,22.5,4");
  EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon));
  EXPECT_EQ(radec[0], 105.0);
}

TEST_F(Exports, TakeNullWhereTheHeaderAllowsIt) {
  EXPECT_EQ(driver.SetName(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetVendor(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetLogPrefix(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetIni(nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetPos(nullptr, nullptr), 1);
  EXPECT_EQ(driver.GetPos(nullptr, nullptr), 0);
  StartSession();
  EXPECT_EQ(driver.BaseSetting(nullptr, nullptr, nullptr), 1);
  EXPECT_THAT(Requests(), IsEmpty());
}

TEST_F(Exports, LookWithNullRepeatsTheStoredTarget) {
  StartSession();
  const double target[2] = {15.0, 10.0};
  EXPECT_EQ(driver.SetPos(nullptr, target), 1);
  EXPECT_THAT(Requests(), IsEmpty());
  EXPECT_THAT(Sent("$MTTGT=", [&] { return driver.Look(nullptr, nullptr); }),
              ElementsAre("$MTTGT=3,1.000000,10.000000,"));
}

TEST_F(Exports, JournalRepeatsEarlierFailuresAtEveryEnd) {
  driver.SetLogPrefix(nullptr, "scope1");
  controller.AnswersOnce("$SYUTM?", simulator::Silence());
  StartSession();
  driver.End(nullptr);
  std::vector<std::string> texts;
  for (const auto& entry : std::filesystem::directory_iterator(journals.Path())) {
    EXPECT_EQ(entry.path().filename().wstring().rfind(L"scope1_timeouterr_korvelwireless_2", 0),
              0u);
    texts.push_back(*ReadWholeFile(entry.path()));
  }
  ASSERT_EQ(texts.size(), 1u);
  EXPECT_THAT(texts[0], testing::HasSubstr(" $SYUTM? : TimeOut\r\n"));
  driver.SetLogPrefix(nullptr, "");
}

TEST_F(Exports, DateAndAngleFunctionsAreThereForTheHost) {
  EXPECT_EQ(driver.CalcJd(2000, 1, 1.5), 2451545.0);
  EXPECT_EQ(driver.GetMjd(2451545.0), 51544.5);
  int32_t year = 0;
  int32_t month = 0;
  double day = 0.0;
  driver.JdToDate(2299159.5, &year, &month, &day);
  EXPECT_EQ(year, 1582);
  EXPECT_EQ(month, 10);
  EXPECT_EQ(day, 4.0);
  HourMinSec time = {};
  driver.HourTo60(12.5, &time);
  EXPECT_EQ(time.nHour, 12);
  EXPECT_EQ(time.nMin, 30);
  EXPECT_EQ(driver.Degmal(-30.0), 330.0);
  EXPECT_EQ(driver.Degmal2(200.0), -90.0);
}

}  // namespace
