// SPDX-License-Identifier: MIT
#include "tests/library/faults/fault_kinds.h"

#include <climits>
#include <string>

#include "simulator/random_bits.h"

namespace {

using simulator::Fault;

constexpr const char* kFaultNames[kFaultKinds] = {
    "command lost", "reply lost", "delay", "late",    "duplicate", "reorder",
    "truncate",     "garble",     "empty", "foreign", "split",     "silence"};
constexpr const char* kPhaseNames[kPhases] = {"open",   "handshake", "hand-off", "poll",  "goto",
                                              "pulses", "hand move", "stop",     "close", "queue"};

/// The exchanges of a start, by their numbers.
constexpr int kLastOfOpen = 3;
constexpr int kLastOfHandshake = 7;

Fault FaultOf(FaultKind kind, const simulator::RandomBits& random, uint64_t place) {
  const auto below = [&](uint64_t limit) { return static_cast<int>(random.Below(place, limit)); };
  Fault fault;
  switch (kind) {
    case FaultKind::kLoseCommand:
      fault.losesCommand = true;
      break;
    case FaultKind::kLoseReply:
      fault.losesReply = true;
      break;
    case FaultKind::kDelay:
      fault.delayMs = 20 + below(281);
      break;
    case FaultKind::kLate:
      fault.delayMs = 600 + below(201);
      break;
    case FaultKind::kDuplicate:
      fault.duplicates = true;
      break;
    case FaultKind::kReorder:
      fault.reorders = true;
      break;
    case FaultKind::kTruncate:
      fault.truncateAt = below(1000);
      break;
    case FaultKind::kGarble:
      fault.garblesAt = below(1000);
      // Seven bits: whether a byte beyond them is a letter depends on the code page.
      fault.garbleBits = 1 + static_cast<int>(random.Below(place + 1, 127));
      break;
    case FaultKind::kEmpty:
      fault.empties = true;
      break;
    case FaultKind::kForeign:
      fault.foreign = true;
      break;
    case FaultKind::kSplit:
      fault.splitAt = below(1000);
      break;
    case FaultKind::kSilence:
      fault.silence = true;
      break;
  }
  return fault;
}

}  // namespace

const char* FaultName(FaultKind kind) {
  return kFaultNames[static_cast<int>(kind)];
}

const char* PhaseName(Phase phase) {
  return kPhaseNames[static_cast<int>(phase)];
}

const char* PhaseCommand(Phase phase, uint64_t seed) {
  constexpr const char* kHandOff[] = {"$SYLOC=", "$SYLTM=", "$SYLOC?", "$SYUTM?", "$MTINI="};
  switch (phase) {
    case Phase::kHandOff:
      return kHandOff[seed % 5];
    case Phase::kPoll:
    case Phase::kClose:
      return "$MTSTA?";
    case Phase::kGoto:
    case Phase::kQueue:
      return "$MTTGT=";
    case Phase::kPulses:
    case Phase::kHandMove:
      return "$MTMV2=";
    case Phase::kStop:
      return "$MTSTP=";
    default:
      return "";
  }
}

simulator::FaultChooser PhaseFaults(FaultKind kind, Phase phase, uint64_t seed) {
  const bool isOpen = phase == Phase::kOpen;
  const bool isStart = isOpen || phase == Phase::kHandshake;
  const int first = phase == Phase::kHandshake ? kLastOfOpen + 1 : 1;
  const int last = isOpen ? kLastOfOpen : isStart ? kLastOfHandshake : INT_MAX;
  const int certain = isStart ? first + static_cast<int>(seed % (last - first + 1)) : 0;
  const std::string command = PhaseCommand(phase, seed);
  const simulator::RandomBits random(seed);
  return [=, before = false](int exchange, std::string_view text) mutable {
    if (kind == FaultKind::kSilence) return Fault{.silence = exchange >= first};
    const auto place = static_cast<uint64_t>(exchange) * 4;
    bool hit = exchange == certain || (!command.empty() && text.starts_with(command)) ||
               random.Below(place, 3) == 0;
    hit = hit && exchange >= first && exchange <= last;
    // A start that leaves an exchange out is followed by the polls earlier.
    if (isStart && text.starts_with("$MTSTA?")) hit = false;
    // Two late replies in a row would bring the next one to the very end of the driver's patience,
    // where nobody can tell what it makes of it.
    if (kind == FaultKind::kLate && before) hit = false;
    before = hit;
    return hit ? FaultOf(kind, random, place + 1) : Fault();
  };
}
