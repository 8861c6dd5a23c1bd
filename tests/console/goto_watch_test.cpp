// SPDX-License-Identifier: MIT
// How a goto is judged from the positions that follow it, a look every tenth of a second.
#include "console/goto_watch.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace velquinctl {
namespace {

using Verdict = GotoWatch::Verdict;
constexpr double kTolerance = 60.0 / 3600.0;
constexpr double kSkyTurn = 360.0 / 86164.0;  // degrees a second

struct Ending {
  Verdict verdict;
  double seconds;
};

/// Looks at a mount that moves as `position` says until there is a verdict, a minute at most.
Ending Watch(GotoWatch& watch, const std::function<SkyPosition(double)>& position) {
  for (int look = 0; look < 600; ++look) {
    const double seconds = look / 10.0;
    const Verdict verdict = watch.Add(seconds, position(seconds));
    if (verdict != Verdict::kOnTheWay) return {verdict, seconds};
  }
  return {Verdict::kOnTheWay, 60.0};
}

TEST(GotoWatch, ASlewThatComesToRestAtTheTargetHasArrived) {
  GotoWatch watch({40, 20}, kTolerance);
  const Ending end =
      Watch(watch, [](double s) { return SkyPosition{std::min(20 + 4 * s, 40.0), 20}; });
  EXPECT_EQ(end.verdict, Verdict::kArrived);
  EXPECT_GT(end.seconds, 5.5);
  EXPECT_LT(end.seconds, 6.5);
  EXPECT_EQ(watch.Fraction(), 1.0);
}

TEST(GotoWatch, PassingTheTargetIsNoArrival) {
  GotoWatch watch({40, 20}, kTolerance);
  const Ending end =
      Watch(watch, [](double s) { return SkyPosition{std::min(20 + 4 * s, 60.0), 20}; });
  EXPECT_EQ(end.verdict, Verdict::kStoppedShort);
  EXPECT_GT(end.seconds, 17.0);
}

TEST(GotoWatch, ASlewThroughAWideToleranceIsNoArrivalBeforeItRests) {
  GotoWatch watch({40, 20}, 10.0);
  const Ending end =
      Watch(watch, [](double s) { return SkyPosition{std::min(35 + 0.5 * s, 40.0), 20}; });
  EXPECT_EQ(end.verdict, Verdict::kArrived);
  EXPECT_GT(end.seconds, 10.0);
  GotoWatch creeping({40, 20}, 10.0);
  EXPECT_EQ(Watch(creeping, [](double s) { return SkyPosition{35 + 0.1 * s, 20}; }).verdict,
            Verdict::kOnTheWay);
}

TEST(GotoWatch, AMountThatIsThereAlreadyHasArrivedSoon) {
  GotoWatch watch({40, 20}, kTolerance);
  const Ending end = Watch(watch, [](double) { return SkyPosition{40.001, 20}; });
  EXPECT_EQ(end.verdict, Verdict::kArrived);
  EXPECT_LT(end.seconds, 1.2);
}

TEST(GotoWatch, AMountThatStandsStillNeverMoved) {
  GotoWatch watch({40, 20}, kTolerance);
  const Ending end = Watch(watch, [](double) { return SkyPosition{10, 20}; });
  EXPECT_EQ(end.verdict, Verdict::kNeverMoved);
  EXPECT_LT(end.seconds, 8.5);
}

TEST(GotoWatch, TheTurningSkyIsNoMotion) {
  GotoWatch watch({40, 20}, kTolerance);
  const Ending end = Watch(watch, [](double s) { return SkyPosition{10 + s * kSkyTurn, 20}; });
  EXPECT_EQ(end.verdict, Verdict::kNeverMoved);
}

TEST(GotoWatch, AMountWithADetourIsOnTheWay) {
  // The other side of the pier: away from the target, past the pole, and back.
  GotoWatch watch({200, 60}, kTolerance);
  const Ending end = Watch(watch, [](double s) {
    return s < 10 ? SkyPosition{190, 60 + 3 * s} : SkyPosition{200, std::max(120 - 3 * s, 60.0)};
  });
  EXPECT_EQ(end.verdict, Verdict::kArrived);
  EXPECT_GT(end.seconds, 20.0);
}

TEST(GotoWatch, ATurnAtThePoleIsMotionThoughTheSkyHardlyMoves) {
  GotoWatch watch({180, 89.0}, 1.0 / 3600.0);
  const Ending end =
      Watch(watch, [](double s) { return SkyPosition{std::min(4 * s, 180.0), 89.0}; });
  EXPECT_EQ(end.verdict, Verdict::kArrived);
  EXPECT_GT(end.seconds, 45.0);
}

TEST(GotoWatch, TellsHowMuchOfTheWayIsDone) {
  GotoWatch watch({40, 0}, kTolerance);
  watch.Add(0.0, {0, 0});
  EXPECT_EQ(watch.Fraction(), 0.0);
  watch.Add(1.0, {10, 0});
  EXPECT_NEAR(watch.Fraction(), 0.25, 1e-9);
  EXPECT_NEAR(watch.LeftDegrees(), 30.0, 1e-9);
  watch.Add(2.0, {350, 0});
  EXPECT_EQ(watch.Fraction(), 0.0) << "farther away than at the beginning";
}

}  // namespace
}  // namespace velquinctl
