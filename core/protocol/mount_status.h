// SPDX-License-Identifier: MIT
// MountStatus: the contents of one status line. Plain data.
#pragma once

#include <cstdint>

#include "framework/base/cstring.h"

struct MountStatus {
  double controllerMjd = 0.0;  ///< the controller's clock, Modified Julian Date in days
  int32_t state = 0;           ///< 2 slewing, 3 parked
  double axisAngleDegrees = 0.0;
  double park1 = 0.0;  ///< park coordinates in the controller's frame
  double park2 = 0.0;
  double raDegrees = 0.0;
  double decDegrees = 0.0;
  int32_t mode = 0;

  /// @return 1 for the pier side of axis angles up to 90 degrees, -1 above.
  int32_t PierSide() const { return 90.0 >= axisAngleDegrees ? 1 : -1; }
  /// @return true if the mount is ready to observe: not parked, and in an observing mode.
  bool IsReady() const;
};

/// Reads a status line. Missing fields count as 0, further fields are ignored.
/// @param line the whole reply @param status unchanged on failure
/// @return false if the line is not a status. Allocates no memory.
bool DecodeStatus(const CString& line, MountStatus& status);
