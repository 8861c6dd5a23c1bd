// SPDX-License-Identifier: MIT
// The commands in the engine's queue.
#pragma once

#include <cstdint>

/// Codes 8 and 10 are not used. The worker drops unknown codes.
enum TelescopeCommand : int32_t {
  kCommandNone = 0,  ///< the queue was empty
  kCommandSiteAndClock = 1,
  kCommandGoto = 2,
  kCommandSync = 3,
  kCommandHandMove = 4,
  kCommandGuideSpeed = 5,
  kCommandGuidePulses = 6,
  kCommandStop = 7,
  kCommandHome = 9,
  kCommandClose = 11,
  kCommandAlignReset = 12,
  kCommandPark = 13,
  kCommandUnPark = 14,
};
