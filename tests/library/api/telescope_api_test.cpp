// SPDX-License-Identifier: MIT
// What every export does around the engine's own operation.
#include "include/telescope_api.h"

#include <gtest/gtest.h>

#include <new>

#include "framework/base/module_state.h"
#include "tests/library/api/system_wraps.h"

namespace {

class ExportCall : public testing::Test {
 protected:
  ~ExportCall() override {
    system_wraps::SetGetStatus({});
    AfxSetModuleState(nullptr);
  }

  AFX_MODULE_STATE ofTheHost;
};

TEST_F(ExportCall, RunsInTheLibrarysModuleStateAndLeavesItAgain) {
  AFX_MODULE_STATE* inside = nullptr;
  system_wraps::SetGetStatus([&] {
    inside = AfxGetModuleState();
    return 1;
  });
  AfxSetModuleState(&ofTheHost);
  EXPECT_EQ(TelescopeGetStatus(nullptr), 1);
  EXPECT_EQ(inside, AfxGetStaticModuleState());
  EXPECT_EQ(AfxGetModuleState(), &ofTheHost);
}

TEST_F(ExportCall, ThrowsNothingIntoTheHost) {
  system_wraps::SetGetStatus([]() -> int { throw std::bad_alloc(); });
  AfxSetModuleState(&ofTheHost);
  EXPECT_EQ(TelescopeGetStatus(nullptr), 0);
  EXPECT_EQ(AfxGetModuleState(), &ofTheHost);
}

TEST_F(ExportCall, AnswersWithTheEnginesResult) {
  system_wraps::SetGetStatus([] { return 5; });
  EXPECT_EQ(TelescopeGetStatus(nullptr), 5);
}

}  // namespace
