// SPDX-License-Identifier: MIT
// One motor axis of the simulated mount: an angle and the speed a slew has given it.
// A plain value; not locked.
#pragma once

namespace simulator {

/// How fast an axis may slew.
struct SlewLimits {
  double topRate;       ///< degrees per second, above 0
  double acceleration;  ///< degrees per second squared, above 0; also used for braking
};

struct SlewAxis {
  double degrees = 0.0;
  double slewRate = 0.0;  ///< degrees per second; 0 unless slewing

  /// Moves one short time step towards a place: speeds up with the acceleration to the top rate and
  /// brakes in time, so that it comes to rest there without passing it. A place nearer than the
  /// braking distance (after a change of mind) is reached by braking harder.
  /// @param stepSeconds above 0, short against topRate / acceleration
  /// @return true when the axis rests at the target.
  bool StepTowards(double targetDegrees, double stepSeconds, const SlewLimits& limits);

  /// @return where the axis comes to rest when it starts braking now.
  double BrakingPoint(const SlewLimits& limits) const;
};

}  // namespace simulator
