// SPDX-License-Identifier: MIT
// A mount in Tokyo on a winter evening, with places in its sky named by hour angle.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "simulator/civil_time.h"
#include "simulator/mount_model.h"

namespace simulator {

inline constexpr double kArcSecond = 1.0 / 3600.0;
inline constexpr double kSecondOfRa = 1.0 / 3600.0;  // hours

class Mount : public testing::Test {
 protected:
  static MountSettings Settings(double latitudeDegrees = 35.681) {
    MountSettings settings;
    settings.site = {139.767, latitudeDegrees, 9};
    settings.utcSeconds = *SecondsFromCivil({2024, 1, 15, 12, 0, 0.0});
    return settings;
  }

  /// The place that stands at this hour angle now. Degrees, positive west of the meridian.
  static SkyPosition At(const MountModel& mount, double hourAngleDegrees, double decDegrees) {
    const double sidereal =
        SiderealDegrees(mount.UtcSeconds(), mount.CurrentSite().longitudeDegrees);
    return {WrapDegrees(sidereal - hourAngleDegrees) / 15.0, decDegrees};
  }
  SkyPosition At(double hourAngleDegrees, double decDegrees) const {
    return At(mount, hourAngleDegrees, decDegrees);
  }

  /// Lets the mount finish its slew. @return seconds it took, or 1000 when it took longer.
  double Arrive() {
    double seconds = 0.0;
    for (; mount.State() == MountState::kSlewing && seconds < 1000.0; seconds += 0.1) {
      mount.Advance(0.1);
    }
    return seconds;
  }
  void TrackAt(double hourAngleDegrees, double decDegrees) {
    ASSERT_EQ(mount.GotoSky(At(hourAngleDegrees, decDegrees)), SlewAnswer::kAccepted);
    Arrive();
    ASSERT_EQ(mount.State(), MountState::kTracking);
  }
  bool LooksEast() const { return mount.DeclinationCircleDegrees() <= 90.0; }

  MountModel mount{Settings()};
};

/// Right ascensions run from 24 h to 0 h: the shorter way from one to the other, hours.
inline double RaDifference(double fromHours, double toHours) {
  return std::remainder(toHours - fromHours, 24.0);
}

inline void ExpectNear(const SkyPosition& actual, const SkyPosition& expected,
                       double toleranceDegrees = 0.01 * kArcSecond) {
  EXPECT_NEAR(RaDifference(expected.raHours, actual.raHours) * 15.0, 0.0, toleranceDegrees);
  EXPECT_NEAR(actual.decDegrees, expected.decDegrees, toleranceDegrees);
}

}  // namespace simulator
