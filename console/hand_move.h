// SPDX-License-Identifier: MIT
// Judges a hand move or guide pulses by what the coordinates did. Pure; any thread.
#pragma once

#include "console/sky_position.h"

namespace velquinctl {

/// Where a move goes on each axis: -1, 0 or +1, the sign of what its coordinate should do; 0 when
/// nothing was asked of the axis.
struct HandMoveWay {
  int ra = 0;
  int dec = 0;
};

enum class HandMoveVerdict {
  kMoved,     ///< each axis that was asked to went its way
  kUnmoved,   ///< both coordinates stayed
  kSkyDrift,  ///< the sky's turning alone explains what they did
  kOther,     ///< an axis that was asked to did not go its way, or that cannot be told
};

/// @param from the position before, of a mount that did nothing but track or stand
/// @param to the position after, of a mount at rest
/// @param seconds between the two; the first may be half a second older
/// @param tracks whether the mount tracked before and after. On one that does not, the right
///        ascension must have gone farther than the sky took it.
HandMoveVerdict JudgeHandMove(const SkyPosition& from, const SkyPosition& to, double seconds,
                              HandMoveWay way, bool tracks);

/// @return whether anything was asked of an axis.
inline bool Moves(HandMoveWay way) {
  return way.ra != 0 || way.dec != 0;
}

/// @param eastIncreases true for a move by hand, false for pulses: the two have opposite signs
/// @param north the whole of the moves to the north less those to the south, any unit
/// @param east the same of east and west
HandMoveWay WayOf(double north, double east, bool eastIncreases);

}  // namespace velquinctl
