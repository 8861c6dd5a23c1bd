// SPDX-License-Identifier: MIT
// The public header, used by hosts that are not written in today's C++.
#include "tests/library/dll/driver_fixture.h"
#include "tests/library/dll/header_alone.h"

namespace {

const DriverLibrary* library = nullptr;

void* Find(const char* name) {
  return library->Find<void*>(name);
}

class PublicHeader : public DriverTest {
 protected:
  PublicHeader() { library = &driver; }
};

TEST_F(PublicHeader, ServesAHostInC) {
  double radec[2] = {};
  EXPECT_EQ(RunSessionInC11(&Find, controller.Address().c_str(), radec), 1);
  EXPECT_THAT(radec, testing::ElementsAre(90.0, 22.5));
}

TEST_F(PublicHeader, ServesAHostInOldCpp) {
  EXPECT_EQ(AskSpeedStepsInCpp11(&Find), 9);
}

}  // namespace
