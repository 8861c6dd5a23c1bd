// SPDX-License-Identifier: MIT
#include "core/protocol/mount_status.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <set>
#include <string>

#include "tests/core/util/scarce_memory.h"

namespace {

const MountStatus kUntouched = {1.0, 2, 3.0, 4.0, 5.0, 6.0, 7.0, 8};

bool Decode(const std::string& line, MountStatus& status) {
  return DecodeStatus(line.c_str(), status);
}

MountStatus Decoded(const std::string& line) {
  MountStatus status = kUntouched;
  EXPECT_TRUE(Decode(line, status)) << line;
  return status;
}

void ExpectZeros(const MountStatus& status) {
  EXPECT_EQ(status.controllerMjd, 0.0);
  EXPECT_EQ(status.state, 0);
  EXPECT_EQ(status.axisAngleDegrees, 0.0);
  EXPECT_EQ(status.park1, 0.0);
  EXPECT_EQ(status.park2, 0.0);
  EXPECT_EQ(status.raDegrees, 0.0);
  EXPECT_EQ(status.decDegrees, 0.0);
  EXPECT_EQ(status.mode, 0);
  EXPECT_EQ(status.PierSide(), 1);
  EXPECT_FALSE(status.IsReady());
}

TEST(MountStatus, ReadsItsFields) {
  const MountStatus status = Decoded("$MTSTA=60310.25,1,97,98,99,120.5,10.5,-20.25,6.0,-5.25,4");
  EXPECT_EQ(status.controllerMjd, 60310.25);
  EXPECT_EQ(status.state, 1);
  EXPECT_EQ(status.axisAngleDegrees, 120.5);
  EXPECT_EQ(status.park1, 10.5);
  EXPECT_EQ(status.park2, -20.25);
  EXPECT_EQ(status.raDegrees, 90.0) << "6 hours";
  EXPECT_EQ(status.decDegrees, -5.25);
  EXPECT_EQ(status.mode, 4);
}

TEST(MountStatus, IgnoresFurtherFields) {
  const MountStatus status = Decoded("$MTSTA=1,2,3,4,5,6,7,8,12,10,11,12,13,abc");
  EXPECT_EQ(status.raDegrees, 180.0);
  EXPECT_EQ(status.decDegrees, 10.0);
  EXPECT_EQ(status.mode, 11);
}

TEST(MountStatus, TakesMissingFieldsForZero) {
  ExpectZeros(Decoded("$MTSTA="));
  ExpectZeros(Decoded("$MTSTA"));
  const MountStatus status = Decoded("$MTSTA=60310.5,2,0,0,0,91");
  EXPECT_EQ(status.controllerMjd, 60310.5);
  EXPECT_EQ(status.state, 2);
  EXPECT_EQ(status.PierSide(), -1);
  EXPECT_EQ(status.park1, 0.0);
  EXPECT_EQ(status.raDegrees, 0.0);
  EXPECT_EQ(status.mode, 0);
  EXPECT_FALSE(status.IsReady());
}

TEST(MountStatus, TakesEmptyAndUnreadableFieldsForZero) {
  const MountStatus status = Decoded("$MTSTA=,,,,,x,,y,6.0,,four");
  EXPECT_EQ(status.controllerMjd, 0.0);
  EXPECT_EQ(status.axisAngleDegrees, 0.0);
  EXPECT_EQ(status.park2, 0.0);
  EXPECT_EQ(status.raDegrees, 90.0);
  EXPECT_EQ(status.mode, 0);
}

TEST(MountStatus, TakesWhiteSpaceAroundFields) {
  const MountStatus status = Decoded(" $MTSTA = 1.5 , 2 ,,,, 45 , 1, 2, 3 ,\t4 , 5 ");
  EXPECT_EQ(status.controllerMjd, 1.5);
  EXPECT_EQ(status.state, 2);
  EXPECT_EQ(status.raDegrees, 45.0);
  EXPECT_EQ(status.mode, 5);
}

TEST(MountStatus, ReadsIntegersUpToTheirPoint) {
  const MountStatus status = Decoded("$MTSTA=0,2.9,0,0,0,0,0,0,0,0,4.9");
  EXPECT_EQ(status.state, 2);
  EXPECT_EQ(status.mode, 4);
}

#ifdef _WIN32

// In the code page of these tests 0x83 begins a character of two bytes, whatever follows it, so the
// separators after it are no separators.
TEST(MountStatus, LeavesSecondBytesAlone) {
  MountStatus status = Decoded("$MTSTA=60310.5,2\x83,7,0,0,0,120,1,2,6,7,4");
  EXPECT_EQ(status.state, 2);
  EXPECT_EQ(status.axisAngleDegrees, 120.0) << "two fields are one";
  EXPECT_EQ(status.raDegrees, 90.0);
  status = Decoded("$MTSTA=60310.5,2\x83=,0,0,0,120,1,2,6,7,4");
  EXPECT_EQ(status.state, 2);
  EXPECT_EQ(status.axisAngleDegrees, 120.0) << "the line goes on";
}

#endif

TEST(MountStatus, EndsAtASecondEqualsSign) {
  const MountStatus status = Decoded("$MTSTA=60310.5,2=0,0,0,120,1,2,6,7,4");
  EXPECT_EQ(status.controllerMjd, 60310.5);
  EXPECT_EQ(status.state, 2);
  EXPECT_EQ(status.axisAngleDegrees, 0.0);
  EXPECT_EQ(status.raDegrees, 0.0);
}

TEST(MountStatus, KnowsItsKeyInAnyCase) {
  EXPECT_EQ(Decoded("$mtsta=1,2,0,0,0,0,0,0,6,0,4").raDegrees, 90.0);
  EXPECT_EQ(Decoded("$MtStA=1,2,0,0,0,0,0,0,6,0,4").raDegrees, 90.0);
}

TEST(MountStatus, RefusesOtherLines) {
  for (const char* line : {"", "=1,2,3", "$MTSTB=1,2,3", "MTSTA=1,2,3", "$MTSTA2=1,2,3",
                           "$MTSTA:1,2,3", "$MTST=1,2,3", "x$MTSTA=1,2,3"}) {
    MountStatus status = kUntouched;
    EXPECT_FALSE(Decode(line, status)) << line;
    EXPECT_EQ(status.state, kUntouched.state);
    EXPECT_EQ(status.raDegrees, kUntouched.raDegrees);
    EXPECT_EQ(status.mode, kUntouched.mode);
  }
}

// The link gives no such line; a text ends at a NUL here as it does everywhere.
TEST(MountStatus, EndsAtANul) {
  constexpr char kLine[] = "$MTSTA\0x=1,2";
  MountStatus status = kUntouched;
  EXPECT_TRUE(DecodeStatus(CString(kLine, sizeof kLine - 1), status));
  ExpectZeros(status);
}

// A line that could not be split for want of memory once looked like one of the key alone: position
// and park coordinates became 0, and a park would have gone there.
TEST(MountStatus, IsReadWithoutAnyMemory) {
  const CString line = "$MTSTA=60310.5,2,0,0,0,120,10.5,-20.25,6.0,-5.25,4,11,12,13,14,15,16,17";
  MountStatus status = kUntouched;
  bool decoded = false;
  {
    const ScarceMemory scarce(0);
    decoded = DecodeStatus(line, status);
  }
  EXPECT_TRUE(decoded);
  EXPECT_EQ(status.park1, 10.5);
  EXPECT_EQ(status.raDegrees, 90.0);
}

TEST(MountStatus, TellsThePierSideByTheAxisAngle) {
  MountStatus status;
  for (const double angle : {-180.0, 0.0, 89.9, 90.0}) {
    status.axisAngleDegrees = angle;
    EXPECT_EQ(status.PierSide(), 1) << angle;
  }
  for (const double angle : {90.1, 90.00000001, 180.0, 270.0}) {
    status.axisAngleDegrees = angle;
    EXPECT_EQ(status.PierSide(), -1) << angle;
  }
}

TEST(MountStatus, IsReadyInAnObservingModeUnlessParked) {
  const std::set<int> observing = {3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14};
  MountStatus status;
  for (status.state = -1; status.state <= 5; ++status.state) {
    for (status.mode = -3; status.mode <= 20; ++status.mode) {
      const bool expected = status.state != 3 && observing.count(status.mode) == 1;
      EXPECT_EQ(status.IsReady(), expected) << "state " << status.state << ", mode " << status.mode;
    }
  }
}

}  // namespace
