// SPDX-License-Identifier: MIT
// A moment told in a zone that the controller can take.
#include "console/whole_hour_zone.h"

#include <gmock/gmock.h>

namespace velquinctl {
namespace {

using testing::ElementsAre;

// Date, hour and minute, second, and the zone.
std::vector<double> Shifted(const SiteTime& local) {
  const SiteTime time = InWholeHourZone(local);
  return {double(time.year),   double(time.month), double(time.day), double(time.hour),
          double(time.minute), time.second,        time.zone};
}

TEST(WholeHourZone, LeavesWholeHoursAlone) {
  EXPECT_THAT(Shifted({2026, 11, 21, 22, 30, 15.5, -4.0}),
              ElementsAre(2026, 11, 21, 22, 30, 15.5, -4));
}

TEST(WholeHourZone, GoesBackEastOfGreenwich) {
  EXPECT_THAT(Shifted({2026, 11, 22, 0, 9, 26.25, 5.5}),
              ElementsAre(2026, 11, 21, 23, 39, 26.25, 5));
  EXPECT_THAT(Shifted({2026, 3, 1, 0, 40, 0, 5.75}), ElementsAre(2026, 2, 28, 23, 55, 0, 5));
}

TEST(WholeHourZone, GoesForwardWestOfGreenwich) {
  EXPECT_THAT(Shifted({2026, 12, 31, 23, 30, 59.9, -3.5}),
              ElementsAre(2027, 1, 1, 0, 0, testing::DoubleNear(59.9, 1e-9), -3));
}

TEST(WholeHourZone, OfLessThanAnHourIsGreenwich) {
  EXPECT_THAT(Shifted({2028, 2, 29, 0, 15, 0, 0.5}), ElementsAre(2028, 2, 28, 23, 45, 0, 0));
}

}  // namespace
}  // namespace velquinctl
