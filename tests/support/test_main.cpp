// SPDX-License-Identifier: MIT
// The entry point of every test program.
#include <gmock/gmock.h>

#include "tests/support/crash_report.h"

int main(int argc, char** argv) {
  InstallCrashReport();
  testing::InitGoogleMock(&argc, argv);
  return RUN_ALL_TESTS();
}
