// SPDX-License-Identifier: MIT
#include "library/api/module_object.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> events;

template <char kName>
struct Noting {
  Noting() { events.push_back(std::string("+") + kName); }
  ~Noting() { events.push_back(std::string("-") + kName); }
  int value = 7;
};

class ModuleObject : public testing::Test {
 protected:
  ModuleObject() { events.clear(); }
};

TEST_F(ModuleObject, LivesAsAnyOtherObject) {
  {
    CModuleObject<Noting<'a'>> first;
    CModuleObject<Noting<'b'>> second;
    EXPECT_THAT(events, ElementsAre("+a", "+b"));
    EXPECT_EQ(first.Get().value, 7);
    first.Get().value = 8;
    EXPECT_EQ(first.Get().value, 8);
    EXPECT_EQ(second.Get().value, 7);
  }
  EXPECT_THAT(events, ElementsAre("+a", "+b", "-b", "-a"));
}

TEST_F(ModuleObject, IsNotDestroyedOnceItWasAbandoned) {
  {
    CModuleObject<Noting<'a'>> abandoned;
    const CModuleObject<Noting<'b'>> other;
    abandoned.Abandon();
    EXPECT_EQ(abandoned.Get().value, 7) << "it can still be used";
    events.clear();
  }
  EXPECT_THAT(events, ElementsAre("-b"));
}

TEST_F(ModuleObject, IsAlignedAsItsTypeAsks) {
  struct alignas(64) Wide {
    char bytes[64];
  };
  CModuleObject<Wide> wide;
  EXPECT_EQ(reinterpret_cast<uintptr_t>(&wide.Get()) % 64, 0u);
  EXPECT_THAT(events, IsEmpty());
}

}  // namespace
