// SPDX-License-Identifier: MIT
// Whether a hand move or a pulse did what was asked.
#include "console/hand_move.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

constexpr double kArcSecond = 1.0 / 3600.0;
constexpr double kSeconds = 2.0;
constexpr double kDrift = kSeconds * 15.041 * kArcSecond;
constexpr HandMoveWay kNorth{.ra = 0, .dec = 1};
constexpr HandMoveWay kUp{.ra = 1, .dec = 0};
constexpr HandMoveWay kDown{.ra = -1, .dec = 0};

HandMoveVerdict Judge(double ra, double dec, HandMoveWay way, bool tracks = true) {
  return JudgeHandMove({359.9999, 20}, {359.9999 + ra, 20 + dec}, kSeconds, way, tracks);
}

TEST(HandMove, TheSmallestGuidePulseIsSeen) {
  EXPECT_EQ(Judge(0, 0.75 * kArcSecond, kNorth), HandMoveVerdict::kMoved);
  EXPECT_EQ(Judge(0.75 * kArcSecond, 0, kUp), HandMoveVerdict::kMoved);
  EXPECT_EQ(Judge(-0.75 * kArcSecond, 0, kDown), HandMoveVerdict::kMoved);
  EXPECT_EQ(Judge(0.001 - 360.0, 0, kUp), HandMoveVerdict::kMoved) << "past 24 hours";
}

TEST(HandMove, TheOtherWayIsNotTheMove) {
  EXPECT_EQ(Judge(0, -13.4, kNorth), HandMoveVerdict::kOther);
  EXPECT_EQ(Judge(-1.0, 0, kUp), HandMoveVerdict::kOther);
  EXPECT_EQ(Judge(1.0, 0, kDown), HandMoveVerdict::kOther);
  EXPECT_EQ(Judge(1.0, 0, kNorth), HandMoveVerdict::kOther) << "the other axis";
  EXPECT_EQ(Judge(0, 1.0, {.ra = -1, .dec = 1}), HandMoveVerdict::kOther) << "one of two axes";
}

TEST(HandMove, AMountThatStaysIsUnmoved) {
  EXPECT_EQ(Judge(0, 0, kNorth), HandMoveVerdict::kUnmoved);
  EXPECT_EQ(Judge(1e-5, 1e-5, {.ra = 1, .dec = 1}), HandMoveVerdict::kUnmoved) << "rounding";
}

TEST(HandMove, TheSkyIsNoMoveOfAMountThatDoesNotTrack) {
  for (const HandMoveWay way : {kNorth, kUp, kDown})
    EXPECT_EQ(Judge(kDrift, 0, way, false), HandMoveVerdict::kSkyDrift);
  EXPECT_EQ(Judge(kDrift, 1.0, {.ra = 1, .dec = 1}, false), HandMoveVerdict::kOther);
  EXPECT_EQ(Judge(1.0, 0, kUp, false), HandMoveVerdict::kMoved) << "far more than the sky";
  EXPECT_EQ(Judge(kDrift, kArcSecond, kNorth, false), HandMoveVerdict::kMoved);
}

TEST(HandMove, EastHasOppositeSignsInMovesAndPulses) {
  EXPECT_EQ(WayOf(0, 1, true).ra, 1);
  EXPECT_EQ(WayOf(0, 1, false).ra, -1);
  EXPECT_EQ(WayOf(-200, 0, false).dec, -1);
  EXPECT_FALSE(Moves(WayOf(0, 0, true)));
}

}  // namespace
}  // namespace velquinctl
