// SPDX-License-Identifier: MIT
// The entry point of every test program.
#include <gmock/gmock.h>

#include "tests/support/crash_report.h"
#include "tests/support/fault_count.h"

namespace {

// A fault that ends neither the program nor the test that made it.
class FaultListener : public testing::EmptyTestEventListener {
  void OnTestEnd(const testing::TestInfo&) override {
    const Faults faults = TakeFaults();
    EXPECT_EQ(faults.count, 0) << "faults of this process, the last one at " << faults.last;
  }
};

}  // namespace

int main(int argc, char** argv) {
  InstallCrashReport();
  CountFaults();
  testing::InitGoogleMock(&argc, argv);
  testing::UnitTest::GetInstance()->listeners().Append(new FaultListener);  // takes it over
  return RUN_ALL_TESTS();
}
