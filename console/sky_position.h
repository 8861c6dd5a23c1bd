// SPDX-License-Identifier: MIT
// A place on the sky, in the mount's own frame and in degrees, as the driver counts.
#pragma once

namespace velquinctl {

struct SkyPosition {
  double raDegrees = 0.0;   ///< right ascension, 0 up to, but not including, 360
  double decDegrees = 0.0;  ///< declination, -90 to +90
};

}  // namespace velquinctl
