// SPDX-License-Identifier: MIT
// The observing site and the controller's clock, both ways.
#include <string>

#include "tests/core/protocol/mount_session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SiteClock : public MountSession {
 protected:
  SiteClock() { Connect(); }

  int SetLocation(double latitude, double longitude, int32_t newZone) {
    const double site[2] = {latitude, longitude};
    return session.SetLocation(site, newZone, reply);
  }
  int GetLocation() { return session.GetLocation(position, &zone, reply); }
  int GetUtcTime() { return session.GetUtcTime(time, reply); }
  /// @return the values that are sent for a local time.
  std::string SentLocalTime(const SiteTime& local) {
    EXPECT_EQ(session.SetLocalTime(local, reply), 1);
    const auto sent = Sent();
    return sent.size() == 1 && sent[0].starts_with("$SYLTM=") ? sent[0].substr(7) : "(wrong)";
  }
  void ExpectTimeUntouched() const {
    EXPECT_EQ(time.year, 1);
    EXPECT_EQ(time.month, 2);
    EXPECT_EQ(time.day, 3);
    EXPECT_EQ(time.hour, 4);
    EXPECT_EQ(time.minute, 5);
    EXPECT_EQ(time.second, 6.5);
    EXPECT_EQ(time.zone, 7.5);
  }

  double position[2] = {-1.0, -2.0};  // latitude, longitude
  int32_t zone = -3;
  SiteTime time = {1, 2, 3, 4, 5, 6.5, 7.5};
};

// --- Site ----------------------------------------------------------------------------------------

TEST_F(SiteClock, SendsLongitudeBeforeLatitudeInFixedWidths) {
  EXPECT_EQ(SetLocation(35.681, 139.767, 9), 1);
  EXPECT_EQ(SetLocation(-33.9, 151.2, 10), 1);
  EXPECT_EQ(SetLocation(0.0, -0.25, -5), 1);
  EXPECT_EQ(SetLocation(-89.9996, -179.9996, 0), 1);
  EXPECT_THAT(Sent(), ElementsAre("$SYLOC= 139.767, 35.681,9", "$SYLOC= 151.200,-33.900,10",
                                  "$SYLOC=  -0.250,  0.000,-5", "$SYLOC=-180.000,-90.000,0"));
}

TEST_F(SiteClock, ChecksThePrefixOfASite) {
  controller.AnswersInTurn("$SYLOC=", {"$syloc=1", "$SYLTM=1", "$SYLOC"});
  EXPECT_EQ(SetLocation(1.0, 2.0, 3), 1);
  EXPECT_EQ(SetLocation(1.0, 2.0, 3), 0);
  EXPECT_EQ(SetLocation(1.0, 2.0, 3), 0);
}

TEST_F(SiteClock, ReadsTheSite) {
  controller.Answers("$SYLOC?", "$SYLOC= 139.767, -35.681 ,9");
  EXPECT_EQ(GetLocation(), 1);
  EXPECT_THAT(Sent(), ElementsAre("$SYLOC?"));
  EXPECT_THAT(position, ElementsAre(-35.681, 139.767));
  EXPECT_EQ(zone, 9);
  EXPECT_EQ(Reply(), "$SYLOC= 139.767, -35.681 ,9");
}

TEST_F(SiteClock, ReadsTheZoneAsAnInteger) {
  controller.AnswersInTurn("$SYLOC?", {"$syloc=1,2,-3.5", "$SYLOC=1,2,east"});
  EXPECT_EQ(GetLocation(), 1);
  EXPECT_EQ(zone, -3);
  EXPECT_EQ(GetLocation(), 1);
  EXPECT_EQ(zone, 0);
}

TEST_F(SiteClock, WritesNoSiteUnlessThereAreThreeFields) {
  controller.AnswersInTurn("$SYLOC?", {"$SYLOC=1,2,3,4", "$SYLOC=1,2", "$SYLOC=1,2,",
                                       "$SYLOC=", "$SYLTM=1,2,3", "$SYLOC:1,2,3"});
  for (int i = 0; i < 6; ++i) EXPECT_EQ(GetLocation(), 0) << i;
  EXPECT_THAT(position, ElementsAre(-1.0, -2.0));
  EXPECT_EQ(zone, -3);
}

// --- Local time ----------------------------------------------------------------------------------

TEST_F(SiteClock, CutsTheTimeToTheMinute) {
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 0.0, 9.0}), "2024,03,05,21,07,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 59.90, 9.0}), "2024,03,05,21,07,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 59.94, 9.0}), "2024,03,05,21,07,00.0");
  EXPECT_EQ(SentLocalTime({2024, 12, 31, 0, 0, 30.0, 9.0}), "2024,12,31,00,00,00.0");
}

TEST_F(SiteClock, RoundsTheLastTwentiethOfASecondUp) {
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 59.95, 9.0}), "2024,03,05,21,08,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 59.96, 9.0}), "2024,03,05,21,08,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 59.999, 9.0}), "2024,03,05,21,08,00.0");
}

TEST_F(SiteClock, RoundsLeapSecondsUpButNothingBehindThem) {
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 60.0, 9.0}), "2024,03,05,21,08,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 60.94, 9.0}), "2024,03,05,21,08,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 60.95, 9.0}), "2024,03,05,21,07,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 61.0, 9.0}), "2024,03,05,21,07,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 7, 120.0, 9.0}), "2024,03,05,21,07,00.0");
}

TEST_F(SiteClock, CarriesIntoHourDayMonthAndYear) {
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 21, 59, 59.97, 9.0}), "2024,03,05,22,00,00.0");
  EXPECT_EQ(SentLocalTime({2024, 3, 5, 23, 59, 59.97, 9.0}), "2024,03,06,00,00,00.0");
  EXPECT_EQ(SentLocalTime({2024, 2, 28, 23, 59, 59.97, 9.0}), "2024,02,29,00,00,00.0");
  EXPECT_EQ(SentLocalTime({2023, 2, 28, 23, 59, 59.97, 9.0}), "2023,03,01,00,00,00.0");
  EXPECT_EQ(SentLocalTime({2024, 4, 30, 23, 59, 59.97, 9.0}), "2024,05,01,00,00,00.0");
  EXPECT_EQ(SentLocalTime({2023, 12, 31, 23, 59, 59.97, 9.0}), "2024,01,01,00,00,00.0");
}

TEST_F(SiteClock, SendsTheHostsOwnTimeWhateverTheZone) {
  for (const double hours : {-12.0, -4.5, 0.0, 9.0, 14.0}) {
    EXPECT_EQ(SentLocalTime({2023, 12, 31, 23, 59, 59.97, hours}), "2024,01,01,00,00,00.0");
    EXPECT_EQ(SentLocalTime({2024, 1, 1, 0, 0, 1.0, hours}), "2024,01,01,00,00,00.0");
  }
}

TEST_F(SiteClock, PadsTheYear) {
  EXPECT_EQ(SentLocalTime({476, 9, 4, 1, 2, 3.0, 0.0}), "0476,09,04,01,02,00.0");
}

TEST_F(SiteClock, ChecksThePrefixOfALocalTime) {
  controller.AnswersInTurn("$SYLTM=", {"$syltm=1", "$SYLOC=1"});
  EXPECT_EQ(session.SetLocalTime(time, reply), 1);
  EXPECT_EQ(session.SetLocalTime(time, reply), 0);
}

// --- Universal time ------------------------------------------------------------------------------

TEST_F(SiteClock, ReadsUniversalTime) {
  controller.Answers("$SYUTM?", "$SYUTM=2024,3,5,12,7,9");
  EXPECT_EQ(GetUtcTime(), 1);
  EXPECT_THAT(Sent(), ElementsAre("$SYUTM?"));
  EXPECT_EQ(time.year, 2024);
  EXPECT_EQ(time.month, 3);
  EXPECT_EQ(time.day, 5);
  EXPECT_EQ(time.hour, 12);
  EXPECT_EQ(time.minute, 7);
  EXPECT_EQ(time.second, 9.0);
  EXPECT_EQ(time.zone, 0.0);
}

TEST_F(SiteClock, ReadsWholeSecondsOnly) {
  controller.AnswersInTurn("$SYUTM?",
                           {"$SYUTM=2024,03,05,12,07,09.87", "$syutm=2024,3,5,12,7,59.99"});
  EXPECT_EQ(GetUtcTime(), 1);
  EXPECT_EQ(time.second, 9.0);
  EXPECT_EQ(GetUtcTime(), 1);
  EXPECT_EQ(time.second, 59.0);
}

TEST_F(SiteClock, WritesNoTimeUnlessThereAreSixFields) {
  controller.AnswersInTurn("$SYUTM?",
                           {"$SYUTM=2024,3,5,12,7,9,1", "$SYUTM=2024,3,5,12,7",
                            "$SYUTM=", "$SYLTM=2024,3,5,12,7,9", "$SYUTM:2024,3,5,12,7,9"});
  for (int i = 0; i < 5; ++i) EXPECT_EQ(GetUtcTime(), 0) << i;
  ExpectTimeUntouched();
}

// --- Silence, initialising -----------------------------------------------------------------------

TEST_F(SiteClock, WritesNothingInSilence) {
  patience.End();
  controller.IsSilentTo("$SYLOC?");
  controller.IsSilentTo("$SYUTM?");
  EXPECT_EQ(GetLocation(), 0);
  EXPECT_EQ(Reply(), "");
  EXPECT_EQ(GetUtcTime(), 0);
  EXPECT_THAT(position, ElementsAre(-1.0, -2.0));
  EXPECT_EQ(zone, -3);
  ExpectTimeUntouched();
  EXPECT_THAT(app.boxes, IsEmpty());
}

TEST_F(SiteClock, InitialisesTheMount) {
  controller.AnswersInTurn("$MTINI=1", {"$MTINI=1", "$mtini=", "$MTINI:1"});
  EXPECT_EQ(session.InitMount(reply), 1);
  EXPECT_EQ(session.InitMount(reply), 1);
  EXPECT_EQ(session.InitMount(reply), 0);
  EXPECT_THAT(Sent(), ElementsAre("$MTINI=1", "$MTINI=1", "$MTINI=1"));
}

}  // namespace
