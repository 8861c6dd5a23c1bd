// SPDX-License-Identifier: MIT
// The entry point of every test program.
#include <gmock/gmock.h>

#include <cstdio>

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
  const int result = RUN_ALL_TESTS();
  // What the ends of suites and of the environment did, which is no test's.
  const Faults late = TakeFaults();
  if (late.count == 0) return result;
  std::fprintf(stderr, "faults after the last test: %d, the last one at %s\n", late.count,
               late.last.c_str());
  return 1;
}
