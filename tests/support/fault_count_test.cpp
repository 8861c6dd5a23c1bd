// SPDX-License-Identifier: MIT
#include "tests/support/fault_count.h"

#include <gmock/gmock.h>
#include <windows.h>

namespace {

// The system swallows a fault here: it goes on as if the message had been dealt with.
LRESULT CALLBACK FaultyProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_DESTROY) *reinterpret_cast<volatile int*>(0x10) = 1;
  return DefWindowProcW(window, message, wParam, lParam);
}

// What a handler further on takes for dealt with.
LONG CALLBACK GoOn(EXCEPTION_POINTERS*) {
  return EXCEPTION_CONTINUE_EXECUTION;
}

void RaiseAndGoOn(DWORD code) {
  void* handler = AddVectoredExceptionHandler(0, &GoOn);
  RaiseException(code, 0, 0, nullptr);
  RemoveVectoredExceptionHandler(handler);
}

TEST(FaultCountTest, ThereIsNoneWithoutAFault) {
  RaiseAndGoOn(EXCEPTION_BREAKPOINT);
  EXPECT_EQ(TakeFaults().count, 0);
}

TEST(FaultCountTest, FaultsAreCountedOnce) {
  RaiseAndGoOn(EXCEPTION_ACCESS_VIOLATION);
  RaiseAndGoOn(EXCEPTION_ILLEGAL_INSTRUCTION);
  RaiseAndGoOn(EXCEPTION_INT_DIVIDE_BY_ZERO);
  const Faults found = TakeFaults();
  EXPECT_EQ(found.count, 3);
  EXPECT_THAT(found.last, testing::StartsWith("kernelbase.dll+0x"));
  EXPECT_EQ(TakeFaults().count, 0);
}

TEST(FaultCountTest, AFaultThatTheSystemSwallowsIsCounted) {
  WNDCLASSW description = {};
  description.lpfnWndProc = &FaultyProc;
  description.hInstance = GetModuleHandleW(nullptr);
  description.lpszClassName = L"VelquinTestFaulty";
  RegisterClassW(&description);
  HWND window = CreateWindowExW(0, description.lpszClassName, L"", WS_POPUP, 0, 0, 9, 9, nullptr,
                                nullptr, description.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  DestroyWindow(window);
  const Faults found = TakeFaults();
  EXPECT_EQ(found.count, 1);
  EXPECT_THAT(found.last, testing::StartsWith("support_tests.exe+0x"));
}

}  // namespace
