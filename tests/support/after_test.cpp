// SPDX-License-Identifier: MIT
// The part of a list that begins or ends at an entry.
#include "tests/support/after.h"

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::string> kList = {"a", "b", "c", "b", "d"};

TEST(After, GivesWhatFollowsTheFirstOne) {
  EXPECT_THAT(After(kList, "b"), ElementsAre("c", "b", "d"));
  EXPECT_THAT(After(kList, "d"), IsEmpty());
}

TEST(After, FailsTheTestWithoutSuchAnEntry) {
  EXPECT_NONFATAL_FAILURE(EXPECT_THAT(After(kList, "e"), IsEmpty()), "e is missing");
  EXPECT_NONFATAL_FAILURE(After({}, "a"), "a is missing");
}

TEST(UpTo, GivesAllToTheFirstOne) {
  EXPECT_THAT(UpTo(kList, "b"), ElementsAre("a", "b"));
  EXPECT_THAT(UpTo(kList, "d"), ElementsAre("a", "b", "c", "b", "d"));
}

TEST(UpTo, FailsTheTestWithoutSuchAnEntry) {
  EXPECT_NONFATAL_FAILURE(EXPECT_THAT(UpTo(kList, "e"), IsEmpty()), "e is missing");
}

}  // namespace
