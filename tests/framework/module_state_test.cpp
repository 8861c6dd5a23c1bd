// SPDX-License-Identifier: MIT
#include "framework/base/module_state.h"

#include <gtest/gtest.h>

#include <thread>

#include "framework/base/win_app.h"

namespace {

AFX_MODULE_STATE* StateDuringACall(AFX_MODULE_STATE* state) {
  AFX_MANAGE_STATE(state);
  return AfxGetModuleState();
}

}  // namespace

TEST(ModuleState, IsTheLibrarysOwnOnAThreadWithoutOne) {
  EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
}

TEST(ModuleState, IsAnotherForTheLengthOfACall) {
  AFX_MODULE_STATE state;
  EXPECT_EQ(StateDuringACall(&state), &state);
  EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
}

TEST(ModuleState, Nests) {
  AFX_MODULE_STATE outer;
  AFX_MODULE_STATE inner;
  {
    AFX_MANAGE_STATE(&outer);
    {
      AFX_MANAGE_STATE(&inner);
      EXPECT_EQ(AfxGetModuleState(), &inner);
      {
        AFX_MANAGE_STATE(&outer);
        EXPECT_EQ(AfxGetModuleState(), &outer);
      }
      EXPECT_EQ(AfxGetModuleState(), &inner);
    }
    EXPECT_EQ(AfxGetModuleState(), &outer);
  }
  EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
}

TEST(ModuleState, IsRestoredWhenTheCallThrows) {
  AFX_MODULE_STATE outer;
  AFX_MANAGE_STATE(&outer);
  try {
    AFX_MODULE_STATE inner;
    AFX_MANAGE_STATE(&inner);
    throw 1;
  } catch (int) {
  }
  EXPECT_EQ(AfxGetModuleState(), &outer);
}

TEST(ModuleState, BelongsToItsThread) {
  AFX_MODULE_STATE here;
  AFX_MODULE_STATE there;
  AFX_MANAGE_STATE(&here);
  std::thread([&] {
    EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
    AFX_MANAGE_STATE(&there);
    EXPECT_EQ(AfxGetModuleState(), &there);
  }).join();
  EXPECT_EQ(AfxGetModuleState(), &here);
}

TEST(ModuleState, TellsTheOneBefore) {
  AFX_MODULE_STATE first;
  AFX_MODULE_STATE second;
  EXPECT_EQ(AfxSetModuleState(&first), nullptr);
  EXPECT_EQ(AfxSetModuleState(&second), &first);
  EXPECT_EQ(AfxSetModuleState(nullptr), &second);
  EXPECT_EQ(AfxGetModuleState(), AfxGetStaticModuleState());
}

TEST(ModuleState, SaysWhichApplicationObjectCounts) {
  EXPECT_EQ(AfxGetApp(), nullptr);
  const CWinApp own;
  AFX_MODULE_STATE state;
  {
    AFX_MANAGE_STATE(&state);
    EXPECT_EQ(AfxGetApp(), nullptr);
    const CWinApp other;
    EXPECT_EQ(AfxGetApp(), &other);
  }
  EXPECT_EQ(AfxGetApp(), &own);
}
