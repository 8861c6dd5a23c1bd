// SPDX-License-Identifier: MIT
// A place in the sky that the simulated mount, on its usual site, can go to.
#pragma once

#include <cmath>

#include "gateways/mount/snapshot.h"

/// @param state a snapshot with a reading, for the mount's clock
/// @param hoursEast of the meridian, at most a few
inline velquin::SkyPoint HighPlace(const velquin::Snapshot& state, double hoursEast,
                                   double decDegrees = 40.0) {
  constexpr double kSiteHours = 139.767 / 15.0;
  const double days = state.controllerMjd - 51544.5;
  const double sidereal = 18.697374558 + 24.06570982441908 * days + kSiteHours;
  return {std::fmod(std::fmod(sidereal + hoursEast, 24.0) + 24.0, 24.0), decDegrees};
}
