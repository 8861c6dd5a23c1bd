// SPDX-License-Identifier: MIT
// A host whose locale writes numbers with a comma talks to the same controller.
#include <clocale>
#include <cstdlib>
#include <memory>
#include <string>

#include "tests/core/protocol/mount_session_fixture.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::ElementsAre;

class CommaLocale : public MountSession {
 protected:
  static void SetUpTestSuite() {
#ifndef _WIN32
    // Few machines have a German locale installed, so one is made.
    folder = std::make_unique<TempFolder>();
    const std::string locale = folder->Narrow("de_DE.UTF-8");
    const std::string make = "localedef --no-archive -i de_DE -f UTF-8 " + locale;
    ASSERT_EQ(std::system(make.c_str()), 0);
#endif
  }
  static void TearDownTestSuite() { folder.reset(); }

  void SetUp() override {
#ifdef _WIN32
    ASSERT_NE(std::setlocale(LC_ALL, "German"), nullptr);
#else
    setenv("LOCPATH", folder->Narrow().c_str(), 1);
    ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
#endif
    ASSERT_STREQ(std::localeconv()->decimal_point, ",");
    Connect();
  }
  void TearDown() override {
    std::setlocale(LC_ALL, "C");
#ifndef _WIN32
    unsetenv("LOCPATH");
#endif
  }

  static std::unique_ptr<TempFolder> folder;
};

std::unique_ptr<TempFolder> CommaLocale::folder;

TEST_F(CommaLocale, ChangesNothingOnTheWire) {
  const double target[2] = {83.633, -22.0145};
  const double site[2] = {35.681, 139.767};
  session.Goto(3, target, "", reply);
  session.SetLocation(site, 9, reply);
  session.SetLocalTime({2024, 3, 5, 21, 7, 9.5, 9.0}, reply);
  session.TimedMove(250.0, -0.5, 0.0, reply);
  session.SetMeridian(0.0, 3.0, reply);
  EXPECT_THAT(Sent(),
              ElementsAre("$MTTGT=3,5.575533,-22.014500,", "$SYLOC= 139.767, 35.681,9",
                          "$SYLTM=2024,03,05,21,07,00.0", "$MTMV2=0.250000,-0.500000,0.000000",
                          "$MTCOM=0.000000,3.000000"));
}

TEST_F(CommaLocale, ChangesNothingInAnswers) {
  controller.Status("60310.25,1,0,0,0,120.5,10.5,-20.25,6.5,-5.25,4");
  double position[2] = {};
  int32_t state = 0;
  ASSERT_EQ(session.ReadStatus(position, &state, nullptr), 1);
  EXPECT_THAT(position, ElementsAre(97.5, -5.25));
  EXPECT_EQ(probe.ControllerMjd(), 60310.25);
  double site[2] = {};
  int32_t zone = 0;
  ASSERT_EQ(session.GetLocation(site, &zone, reply), 1);
  EXPECT_THAT(site, ElementsAre(35.681, 139.767));
}

TEST_F(CommaLocale, ChangesNothingInQueryTexts) {
  const double target[2] = {83.625, 22.5};
  EXPECT_STREQ(session.FormatRaDecQuery(target), "ra=05+34.5&dec=22+30");
}

TEST_F(CommaLocale, ChangesNothingInTheModel) {
  session.Close();
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(probe.ModelB(), 2.5);
}

}  // namespace
