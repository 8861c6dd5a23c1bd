// SPDX-License-Identifier: MIT
// Every command that a driver sends, as it writes it.
#include "simulator/command_interpreter.h"

#include <gmock/gmock.h>

#include "tests/simulator/mount_fixture.h"

namespace simulator {
namespace {

using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

class Controller : public Mount {
 protected:
  std::string Send(const std::string& line) {
    const CommandOutcome outcome = interpreter.Answer(line);
    note = outcome.note;
    return outcome.reply;
  }
  std::vector<std::string> Values(const std::string& query) {
    const std::string key = query.substr(0, query.size() - 1) + "=";
    const std::string reply = Send(query);
    EXPECT_THAT(reply, StartsWith(key));
    return ParseCommandLine(reply).values;
  }
  double Status(size_t index) { return std::stod(Values("$MTSTA?").at(index)); }
  static std::string Target(const SkyPosition& place) {
    return "$MTTGT=3," + std::to_string(place.raHours) + "," + std::to_string(place.decDegrees) +
           ",";
  }

  CommandInterpreter interpreter{mount};
  std::string note;
};

TEST_F(Controller, TellsItsVersion) {
  const std::string reply = Send("$SYVER?");
  EXPECT_THAT(reply, StartsWith("$SYVER="));
  EXPECT_THAT(reply, HasSubstr(" simulator"));
}

TEST_F(Controller, TellsItsModelInThreeNumbers) {
  EXPECT_EQ(Send("$MTMDL?"), "$MTMDL=1,4.000,4.000");
}

TEST_F(Controller, TellsItsStatusInElevenFields) {
  TrackAt(-40.0, 20.0);
  const SkyPosition place = mount.Position();
  EXPECT_THAT(Values("$MTSTA?"), SizeIs(11));
  EXPECT_NEAR(Status(0), mount.UtcSeconds() / 86400.0, 1e-8);
  EXPECT_EQ(Status(1), 1);
  EXPECT_EQ(Status(2), 0);
  EXPECT_EQ(Status(3), 0);
  EXPECT_NEAR(Status(4), mount.Axes().polarDegrees, 1e-6);
  EXPECT_NEAR(Status(5), 20.0, 1e-6);
  EXPECT_EQ(Status(6), 270.0);
  EXPECT_EQ(Status(7), 30.0);
  EXPECT_NEAR(Status(8), place.raHours, 1e-8);
  EXPECT_NEAR(Status(9), place.decDegrees, 1e-7);
  EXPECT_EQ(Status(10), 4);
}

TEST_F(Controller, GoesToATargetAndSaysSo) {
  EXPECT_EQ(Status(1), 0);
  EXPECT_EQ(Send(Target(At(40.0, 20.0))), "$MTTGT=1");
  EXPECT_EQ(Status(1), 2);
  EXPECT_EQ(Status(10), 4);
  Arrive();
  EXPECT_EQ(Status(1), 1);
  EXPECT_GT(Status(5), 90.0);
}

TEST_F(Controller, TakesANameWithCommas) {
  EXPECT_EQ(Send(Target(At(40.0, 20.0)) + "M 1, the Crab"), "$MTTGT=1");
}

TEST_F(Controller, TakesTwentyFourHoursForZero) {
  mount.SetUtcSeconds(mount.UtcSeconds() +
                      WrapDegrees(-SiderealDegrees(mount.UtcSeconds(), 139.767)) /
                          kSiderealDegreesPerSecond);
  EXPECT_EQ(Send("$MTTGT=3,24.000000,20.000000,"), "$MTTGT=1");
  Arrive();
  ExpectNear(mount.Position(), {0.0, 20.0});
}

TEST_F(Controller, RefusesATargetBelowTheHorizon) {
  EXPECT_EQ(Send(Target(At(-150.0, -20.0))), "$MTTGT=BELOWHORIZON");
  EXPECT_EQ(Status(1), 0);
}

TEST_F(Controller, GoesHome) {
  TrackAt(40.0, 20.0);
  EXPECT_EQ(Send("$MTTGT=1,270.000000,0.000000,Home"), "$MTTGT=1");
  Arrive();
  EXPECT_EQ(Status(1), 0);
  EXPECT_EQ(Status(4), 270.0);
  EXPECT_NEAR(Status(9), 90.0, 1e-7);
}

TEST_F(Controller, ParksWhereTheStatusSaysAndComesBackByAGoto) {
  TrackAt(40.0, 20.0);
  const auto status = Values("$MTSTA?");
  EXPECT_EQ(Send("$MTTGT=2," + status[6] + "," + status[7] + ",Park"), "$MTTGT=1");
  EXPECT_EQ(Status(10), 4);
  Arrive();
  EXPECT_EQ(Status(1), 3);
  EXPECT_EQ(Status(10), 1);
  EXPECT_EQ(Send(Target(mount.Position()) + "Star"), "$MTTGT=1");
  Arrive();
  EXPECT_EQ(Status(1), 1);
  EXPECT_EQ(Status(10), 4);
}

TEST_F(Controller, Synchronises) {
  TrackAt(-40.0, 20.0);
  EXPECT_EQ(Send("$ALIGN=3,5.575533,22.014500,"), "$ALIGN=1");
  EXPECT_NEAR(Status(8), 5.575533, 1e-7);
  EXPECT_NEAR(Status(9), 22.0145, 1e-7);
  EXPECT_EQ(Send("$ALINI=0"), "$ALINI=1");
  EXPECT_NEAR(Status(9), 20.0, 1e-6);
}

TEST_F(Controller, Stops) {
  Send(Target(At(40.0, 20.0)));
  mount.Advance(5.0);
  EXPECT_EQ(Send("$MTSTP=1"), "$MTSTP=1");
  EXPECT_EQ(Send("$MTMV2=1.000000,0.000000,0.000000"), "$MTMV2=1");
  mount.Advance(1.5);
  EXPECT_EQ(Status(1), 1);
}

TEST_F(Controller, MovesByHandAndNotesWhatItDid) {
  TrackAt(-40.0, 20.0);
  EXPECT_EQ(Send("$MTMV2=1.000000,0.000000,25.500000"), "$MTMV2=1");
  EXPECT_EQ(note, "moves 1.000 s, RA +0.000, Dec +25.500 x sidereal");
  EXPECT_EQ(Status(3), 1);
  mount.Advance(0.1);
  EXPECT_EQ(Send("$MTMV2=1.000000,0.000000,25.500000"), "$MTMV2=1");
  EXPECT_THAT(note, HasSubstr("; the move before lasted 0.100 of 1.000 s"));
  mount.Advance(2.0);
  EXPECT_EQ(Status(3), 0);
  EXPECT_NEAR(Status(9), 20.0 + 1.1 * 25.5 * 15.041067 / 3600.0, 1e-6);
  EXPECT_EQ(Send("$MTSTP=1"), "$MTSTP=1");
  EXPECT_EQ(note, "the move before lasted 1.000 of 1.000 s");
}

TEST_F(Controller, CarriesOutAGuidePulse) {
  TrackAt(-40.0, 20.0);
  const double ra = Status(8);
  EXPECT_EQ(Send("$MTMV2=0.250000,-0.500000,0.000000"), "$MTMV2=1");
  mount.Advance(1.0);
  EXPECT_NEAR((Status(8) - ra) * 15.0 * 3600.0, -0.25 * 0.5 * 15.041, 0.001);
}

TEST_F(Controller, TakesTheRatesOfAPulseAsSharesOfTheGuideSpeeds) {
  TrackAt(-40.0, 20.0);
  Send("$MTAGS=0.500000,0.250000");
  const double ra = Status(8);
  const double dec = Status(9);
  Send("$MTMV2=1.000000,-1.000000,0.000000");
  mount.Advance(1.5);
  Send("$MTMV2=1.000000,0.000000,0.500000");
  mount.Advance(1.5);
  EXPECT_NEAR((Status(8) - ra) * 15.0 * 3600.0, -0.5 * 15.041, 0.001);
  EXPECT_NEAR((Status(9) - dec) * 3600.0, 0.5 * 0.25 * 15.041, 0.001);
}

TEST_F(Controller, MovesByHandAtTheFullRateWhateverTheGuideSpeeds) {
  TrackAt(-40.0, 20.0);
  Send("$MTAGS=0.500000,0.250000");
  const double dec = Status(9);
  Send("$MTMV2=1.000000,0.000000,25.500000");
  mount.Advance(1.5);
  EXPECT_NEAR((Status(9) - dec) * 3600.0, 25.5 * 15.041067, 0.001);
}

TEST_F(Controller, RefusesAMoveWhileSlewing) {
  Send(Target(At(40.0, 20.0)));
  EXPECT_EQ(Send("$MTMV2=1.000000,0.000000,25.500000"), "$MTMV2=ERROR");
}

TEST_F(Controller, KeepsGuideRatesMeridianAndGts) {
  EXPECT_EQ(Send("$MTAGS=0.750000,0.250000"), "$MTAGS=1");
  EXPECT_EQ(note, "guide rates 0.750000,0.250000");
  EXPECT_EQ(Send("$MTAGS?"), "$MTAGS=0.750000,0.250000");
  EXPECT_EQ(Send("$MTCOM=10.000000,5.000000"), "$MTCOM=1");
  EXPECT_EQ(Send("$MTCOM?"), "$MTCOM=10.000000,5.000000");
  EXPECT_EQ(mount.MeridianStopDegrees(), 10.0);
  EXPECT_EQ(mount.MeridianGotoDegrees(), 5.0);
  EXPECT_EQ(Send("$MTGTS=7"), "$MTGTS=1");
  EXPECT_EQ(Send("$MTGTS?"), "$MTGTS=7");
}

TEST_F(Controller, TakesTheSitePaddedWithBlanks) {
  EXPECT_EQ(Send("$SYLOC= 139.767, 35.681,9"), "$SYLOC=1");
  EXPECT_EQ(Send("$SYLOC?"), "$SYLOC=139.767,35.681,9");
  EXPECT_EQ(Send("$SYLOC= -70.500,-33.900,-4"), "$SYLOC=1");
  EXPECT_EQ(Send("$SYLOC?"), "$SYLOC=-70.500,-33.900,-4");
}

// The date line makes clocks that are up to fourteen hours ahead of universal time.
TEST_F(Controller, TakesEveryZoneOnEarth) {
  for (int zone = -12; zone <= 14; ++zone) {
    const std::string site = "0.000,0.000," + std::to_string(zone);
    EXPECT_EQ(Send("$SYLOC=" + site), "$SYLOC=1") << zone;
    EXPECT_EQ(Send("$SYLOC?"), "$SYLOC=" + site);
  }
  Send("$SYLTM=2024,01,01,13,00,00.0");
  EXPECT_EQ(Send("$SYUTM?"), "$SYUTM=2023,12,31,23,0,0");
}

TEST_F(Controller, TakesLocalTimeAndTellsUniversalTime) {
  EXPECT_EQ(Send("$SYLTM=2024,03,01,05,30,00.0"), "$SYLTM=1");
  EXPECT_EQ(Send("$SYUTM?"), "$SYUTM=2024,2,29,20,30,0");
  mount.Advance(61.9);
  EXPECT_EQ(Send("$SYUTM?"), "$SYUTM=2024,2,29,20,31,1");
  EXPECT_NEAR(Status(0), 60369.0 + (20.0 * 3600.0 + 31.0 * 60.0 + 1.9) / 86400.0, 1e-8);
}

TEST_F(Controller, ReadsLocalTimeInTheZoneOfTheSite) {
  Send("$SYLOC= -70.500,-33.900,-4");
  Send("$SYLTM=2023,12,31,23,00,00.0");
  EXPECT_EQ(Send("$SYUTM?"), "$SYUTM=2024,1,1,3,0,0");
}

TEST_F(Controller, TheNewClockDecidesWhatIsUp) {
  const std::string star = Target(At(-120.0, 0.0));
  EXPECT_EQ(Send(star), "$MTTGT=BELOWHORIZON");
  EXPECT_EQ(Send("$SYLTM=2024,01,16,00,00,00.0"), "$SYLTM=1");  // three hours later
  EXPECT_EQ(Send(star), "$MTTGT=1");
}

TEST_F(Controller, InitialisingForgetsTheAlignment) {
  TrackAt(-40.0, 20.0);
  Send("$ALIGN=3,5.575533,22.014500,");
  EXPECT_EQ(Send("$MTINI=1"), "$MTINI=1");
  EXPECT_NEAR(Status(9), 20.0, 1e-6);
}

TEST_F(Controller, ReportsThatTrackingEndedAtTheLimit) {
  TrackAt(-10.0, 20.0);
  mount.Advance(4.0 * 3600.0);
  EXPECT_EQ(Status(1), 0);
  EXPECT_EQ(Status(2), 1);
}

/// A mount fresh from the start gets site, clock, initialisation and a goto to where it pointed a
/// moment ago; none of this may be refused, however far the clock is set.
TEST_F(Controller, CanBeStartedByAHostWithAnotherClock) {
  const std::string here = Target(mount.Position());
  EXPECT_EQ(Send("$SYLOC=  10.000, 50.000,1"), "$SYLOC=1");
  EXPECT_EQ(Send("$SYLTM=2025,07,30,03,04,00.0"), "$SYLTM=1");
  EXPECT_EQ(Send("$MTINI=1"), "$MTINI=1");
  EXPECT_EQ(Send(here + "Star"), "$MTTGT=1");
}

}  // namespace
}  // namespace simulator
