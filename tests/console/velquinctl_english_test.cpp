// SPDX-License-Identifier: MIT
// velquinctl on a system that cannot show Japanese: it finds, answers and passes on the driver's
// English message boxes.
#include <gmock/gmock.h>

#include "simulator/scripted_controller.h"
#include "tests/console/mount_fixture.h"

namespace {

using testing::HasSubstr;
using testing::SizeIs;

TEST(VelquinctlInEnglish, TheDriversMessageIsPassedOn) {
  const simulator::ScriptedController silent;
  const ProgramResult result = RunVelquinctl({"status", silent.Address()});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  ASSERT_THAT(result.ErrorLines(), SizeIs(1));
  EXPECT_THAT(result.error,
              HasSubstr("(the driver says: The telescope does not answer. Check the port settings, "
                        "the cables and the power.)"));
}

using VelquinctlInEnglishTest = VelquinctlTest;

TEST_F(VelquinctlInEnglishTest, ATargetBelowTheHorizonIsNamed) {
  const ProgramResult result = RunVelquinctl({"goto", Address(), "5h", "-80"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_THAT(result.error, HasSubstr("(the driver says: The object is below the horizon.)"));
}

}  // namespace
