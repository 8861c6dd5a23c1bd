// SPDX-License-Identifier: MIT
#include "gateways/mount/backoff.h"

#include <gmock/gmock.h>

#include <vector>

namespace {

TEST(Backoff, GrowsFromHalfASecondToFive) {
  velquin::Backoff backoff;
  std::vector<int64_t> waits;
  for (int i = 0; i < 6; ++i) waits.push_back(backoff.Next().count());
  EXPECT_THAT(waits, testing::ElementsAre(500, 1000, 2000, 4000, 5000, 5000));
}

TEST(Backoff, BeginsAgainAfterAReset) {
  velquin::Backoff backoff;
  backoff.Next();
  backoff.Next();
  backoff.Reset();
  EXPECT_EQ(backoff.Next().count(), 500);
}

}  // namespace
