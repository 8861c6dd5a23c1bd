// SPDX-License-Identifier: MIT
#include "platform/debug_output.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string caught;

}  // namespace

#ifdef _WIN32

#include <windows.h>

namespace {

// A debugger gets the text as an exception; so may this process.
LONG CALLBACK CatchText(EXCEPTION_POINTERS* exception) {
  constexpr DWORD kPrint = 0x40010006;  // DBG_PRINTEXCEPTION_C
  const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
  if (record.ExceptionCode != kPrint) return EXCEPTION_CONTINUE_SEARCH;
  caught = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
  return EXCEPTION_CONTINUE_EXECUTION;
}

}  // namespace

TEST(DebugOutput, GoesToTheDebugger) {
  void* handler = AddVectoredExceptionHandler(1, CatchText);
  platform::DebugOutput("err %d location\n");
  RemoveVectoredExceptionHandler(handler);
  EXPECT_EQ(caught, "err %d location\n");
}

#else

TEST(DebugOutput, GoesToStandardError) {
  testing::internal::CaptureStderr();
  platform::DebugOutput("err %d location\n");
  caught = testing::internal::GetCapturedStderr();
  EXPECT_EQ(caught, "err %d location\n");
}

#endif
