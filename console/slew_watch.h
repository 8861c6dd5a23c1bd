// SPDX-License-Identifier: MIT
// Follows a slew whose end is not known beforehand: to home, to the parking place. Times are
// injected; one thread.
#pragma once

#include "console/motion_watch.h"
#include "console/sky_position.h"

namespace velquinctl {

class SlewWatch {
 public:
  /// @param start where the mount was before the command
  explicit SlewWatch(const SkyPosition& start) : start_(start) {}

  /// Begins anew with another row of readings; what was seen so far still counts as moved.
  void Clear() { motion_.Clear(); }
  /// Takes a reading from outside of the row.
  void NoteTravel(const SkyPosition& position);
  /// @param seconds time of the position, never going back
  void Add(double seconds, const SkyPosition& position);

  bool Moved() const { return moved_; }
  /// @return whether the last readings are those of a mount that tracks or stands.
  bool AtRest() const { return motion_.AtRest(); }
  /// @return whether the mount rests as it does at home: it does not track, and its tube looks at
  ///         the pole, give or take ten degrees. A mount that was stopped on the way tracks, or
  ///         stands elsewhere.
  bool RestsAsAtHome() const;
  /// @return the way from the start as of the last Add.
  double TravelDegrees() const { return travelDegrees_; }

 private:
  SkyPosition start_;
  MotionWatch motion_{kRestSeconds};
  SkyPosition last_;
  bool moved_ = false;
  double travelDegrees_ = 0.0;

  static constexpr double kRestSeconds = 1.5;
};

}  // namespace velquinctl
