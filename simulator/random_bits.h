// SPDX-License-Identifier: MIT
// Pseudo-random numbers that are the same on every machine and can be asked for in any order: the
// stream of splitmix64, counted from 0. Pure; any thread.
#pragma once

#include <cstdint>

namespace simulator {

class RandomBits {
 public:
  explicit RandomBits(uint64_t seed) : seed_(seed) {}

  /// @return the 64 bits at that place of the stream.
  uint64_t At(uint64_t index) const {
    uint64_t bits = seed_ + (index + 1) * 0x9E3779B97F4A7C15u;
    bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9u;
    bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBu;
    return bits ^ (bits >> 31);
  }

  /// @param limit 1 to 2^32 @return a number from 0 to limit - 1, all equally likely.
  uint32_t Below(uint64_t index, uint64_t limit) const {
    return static_cast<uint32_t>(((At(index) >> 32) * limit) >> 32);
  }

 private:
  uint64_t seed_;
};

}  // namespace simulator
