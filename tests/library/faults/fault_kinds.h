// SPDX-License-Identifier: MIT
// The axes of the fault matrix: what goes wrong, and in which phase of a session. Any thread.
#pragma once

#include <cstdint>

#include "simulator/fault.h"

enum class FaultKind {
  kLoseCommand,
  kLoseReply,
  kDelay,  ///< 20 to 300 ms: within the driver's patience
  kLate,   ///< 600 to 800 ms: after it
  kDuplicate,
  kReorder,
  kTruncate,
  kGarble,
  kEmpty,
  kForeign,
  kSplit,
  kSilence,
};
inline constexpr int kFaultKinds = 12;
const char* FaultName(FaultKind kind);

enum class Phase {
  kOpen,       ///< the first three exchanges of a start, and those of a check
  kHandshake,  ///< the other four of a start
  kHandOff,
  kPoll,
  kGoto,
  kPulses,
  kHandMove,
  kStop,
  kClose,  ///< a stop, which empties the queue, and the end right behind it
  kQueue,  ///< an end without a stop before it, which works the queue off
};
inline constexpr int kPhases = 10;
const char* PhaseName(Phase phase);

/// @return the command that the faults of a phase hit for certain; for the phases of a start, where
///         the number of the exchange decides, an empty text.
const char* PhaseCommand(Phase phase, uint64_t seed);

/// Chooses the faults of a phase: its own command is hit, and a third of the exchanges around it.
simulator::FaultChooser PhaseFaults(FaultKind kind, Phase phase, uint64_t seed);
