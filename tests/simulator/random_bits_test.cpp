// SPDX-License-Identifier: MIT
#include "simulator/random_bits.h"

#include <gtest/gtest.h>

namespace simulator {
namespace {

// The published test values of splitmix64.
TEST(RandomBits, AreTheKnownStream) {
  const RandomBits random(1234567);
  EXPECT_EQ(random.At(0), 6457827717110365317u);
  EXPECT_EQ(random.At(1), 3203168211198807973u);
  EXPECT_EQ(random.At(2), 9817491932198370423u);
  EXPECT_EQ(random.At(3), 4593380528125082431u);
  EXPECT_EQ(random.At(4), 16408922859458223821u);
}

TEST(RandomBits, StayBelowTheLimitAndReachEveryNumber) {
  const RandomBits random(1);
  int counts[6] = {};
  for (uint64_t i = 0; i < 6000; ++i) ++counts[random.Below(i, 6)];
  for (const int count : counts) EXPECT_NEAR(count, 1000, 150);
  for (uint64_t i = 0; i < 100; ++i) EXPECT_EQ(random.Below(i, 1), 0u);
}

}  // namespace
}  // namespace simulator
