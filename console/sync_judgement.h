// SPDX-License-Identifier: MIT
// Judges a sync by where the mount said it was before and after. Pure; any thread.
#pragma once

#include "console/sky_position.h"

namespace velquinctl {

enum class SyncVerdict {
  kTaken,
  kNotSeen,       ///< the mount does not report the position, or hardly came nearer to it
  kCannotBeTold,  ///< it was so near before that a refused sync looks the same
};

/// A mount that took the sync is within a minute of arc of the target, and at least twice as near
/// as before.
SyncVerdict JudgeSync(const SkyPosition& before, const SkyPosition& after,
                      const SkyPosition& target);

}  // namespace velquinctl
