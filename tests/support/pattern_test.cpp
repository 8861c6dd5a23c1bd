// SPDX-License-Identifier: MIT
#include "tests/support/pattern.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Pattern, FitsTheWholeTextOrNot) {
  EXPECT_TRUE(FitsPattern("moved 12.5", "moved [0-9.]+"));
  EXPECT_FALSE(FitsPattern("moved 12.5 north", "moved [0-9.]+"));
  EXPECT_FALSE(FitsPattern("not moved 12.5", "moved [0-9.]+"));
}

TEST(Pattern, FindsEveryPlaceWithItsGroups) {
  EXPECT_THAT(PatternPlaces("a=1, b=22", R"((\w)=(\d+))"),
              ElementsAre(ElementsAre("a=1", "a", "1"), ElementsAre("b=22", "b", "22")));
  EXPECT_THAT(PatternPlaces("a, b", R"((\w)=(\d+))"), IsEmpty());
}

}  // namespace
