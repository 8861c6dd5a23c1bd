// SPDX-License-Identifier: MIT
#include "simulator/fault_dice.h"

#include <cmath>

#include "simulator/command_line.h"

namespace simulator {

namespace {

constexpr int kThousandths = 1000;
constexpr int kLongestDelayMs = 60'000;

/// What is drawn for each exchange. A new one goes to the end, so that the others stay.
enum Draw : uint64_t {
  kLoseCommand,
  kLoseReply,
  kDelay,
  kDuplicate,
  kReorder,
  kTruncate,
  kTruncatePlace,
  kGarble,
  kGarblePlace,
  kGarbleBits,
  kEmpty,
  kForeign,
  kSplit,
  kSplitPlace,
};
constexpr uint64_t kDrawsPerExchange = 32;

}  // namespace

Fault FaultDice::operator()(int exchange, std::string_view /*command*/) const {
  const auto below = [&](Draw draw, int limit) {
    const uint64_t index = static_cast<uint64_t>(exchange) * kDrawsPerExchange + draw;
    return static_cast<int>(random_.Below(index, static_cast<uint64_t>(limit)));
  };
  const auto happens = [&](Draw draw, int rate) { return below(draw, kAlways) < rate; };
  const auto place = [&](Draw happening, int rate, Draw where) -> std::optional<int> {
    if (!happens(happening, rate)) return std::nullopt;
    return below(where, kThousandths);
  };
  Fault fault;
  fault.silence = options_.silenceAfter && exchange > *options_.silenceAfter;
  if (fault.silence) return fault;
  fault.losesCommand = happens(kLoseCommand, options_.loss);
  fault.losesReply = happens(kLoseReply, options_.loss);
  fault.delayMs = options_.shortestDelayMs +
                  below(kDelay, options_.longestDelayMs - options_.shortestDelayMs + 1);
  fault.duplicates = happens(kDuplicate, options_.duplicate);
  fault.reorders = happens(kReorder, options_.reorder);
  fault.truncateAt = place(kTruncate, options_.truncate, kTruncatePlace);
  fault.garblesAt = place(kGarble, options_.garble, kGarblePlace);
  if (fault.garblesAt) fault.garbleBits = 1 + below(kGarbleBits, 255);
  fault.empties = happens(kEmpty, options_.empty);
  fault.foreign = happens(kForeign, options_.foreign);
  fault.splitAt = place(kSplit, options_.split, kSplitPlace);
  return fault;
}

std::optional<int> RateFromText(std::string_view text) {
  if (!text.ends_with('%')) return std::nullopt;
  const auto percent = NumberValue(text.substr(0, text.size() - 1), 0.0, 100.0);
  if (!percent) return std::nullopt;
  return static_cast<int>(std::lround(*percent * kAlways / 100.0));
}

std::optional<DelayRange> DelayFromText(std::string_view text) {
  if (!text.ends_with("ms")) return std::nullopt;
  text.remove_suffix(2);
  const size_t dots = text.find("..");
  const auto shortest = WholeValue(text.substr(0, dots), 0, kLongestDelayMs);
  const auto longest =
      dots == text.npos ? shortest : WholeValue(text.substr(dots + 2), 0, kLongestDelayMs);
  if (!shortest || !longest || *longest < *shortest) return std::nullopt;
  return DelayRange{*shortest, *longest};
}

}  // namespace simulator
