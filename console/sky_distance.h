// SPDX-License-Identifier: MIT
// How far two places on the sky are from each other. Pure functions, any thread.
#pragma once

#include "console/sky_position.h"

namespace velquinctl {

/// @return the angle along the great circle, degrees, 0 to 180; exact for tiny and for opposite
///         pairs as well.
double SkyDistanceDegrees(const SkyPosition& a, const SkyPosition& b);

/// @return the larger of the two coordinate differences, degrees, right ascension taken the short
///         way round. Near the pole it shows a turning axis that hardly moves on the sky.
double AxisDistanceDegrees(const SkyPosition& a, const SkyPosition& b);

}  // namespace velquinctl
