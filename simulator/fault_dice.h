// SPDX-License-Identifier: MIT
// Chooses faults at random, the same ones for the same seed on every machine. Each kind of fault
// has draws of its own for every exchange: to add one kind, or to raise a rate, leaves all the
// other faults where they were. Constant after construction; any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/fault.h"
#include "simulator/random_bits.h"

namespace simulator {

/// Rates in parts per million of the exchanges.
inline constexpr int kAlways = 1'000'000;

struct FaultOptions {
  int loss = 0;  ///< of commands, and again of replies
  int duplicate = 0;
  int reorder = 0;
  int truncate = 0;
  int garble = 0;
  int empty = 0;
  int foreign = 0;
  int split = 0;
  int shortestDelayMs = 0;  ///< of every reply
  int longestDelayMs = 0;
  std::optional<int> silenceAfter =
      std::nullopt;  ///< so many exchanges pass, then nothing is heard anymore
  uint64_t seed = 1;
};

class FaultDice {
 public:
  explicit FaultDice(const FaultOptions& options) : options_(options), random_(options.seed) {}
  /// A FaultChooser: the command makes no difference.
  Fault operator()(int exchange, std::string_view command = {}) const;

 private:
  FaultOptions options_;
  RandomBits random_;
};

/// A rate as a person writes it, "0.1%". @return parts per million, or nothing.
std::optional<int> RateFromText(std::string_view text);

struct DelayRange {
  int shortestMs;
  int longestMs;
};
/// "20..300ms" or "50ms", up to a minute. @return nothing for anything else.
std::optional<DelayRange> DelayFromText(std::string_view text);

}  // namespace simulator
