// SPDX-License-Identifier: MIT
#include "tests/library/engine/debug_output_capture.h"

#ifdef _WIN32

#include <windows.h>

#include <mutex>

namespace {

std::mutex textLock;
std::string text;  // guarded by textLock

// A program without a debugger raises its debug output as an exception, which the system catches.
LONG CALLBACK OnException(EXCEPTION_POINTERS* exception) {
  const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
  constexpr DWORD kDebugText = 0x40010006;
  if (record.ExceptionCode == kDebugText && record.NumberParameters >= 2) {
    const std::lock_guard guard(textLock);
    // The length counts the NUL.
    text.append(reinterpret_cast<const char*>(record.ExceptionInformation[1]),
                record.ExceptionInformation[0] - 1);
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

DebugOutputCapture::DebugOutputCapture() : handler(AddVectoredExceptionHandler(1, OnException)) {
  const std::lock_guard guard(textLock);
  text.clear();
}

DebugOutputCapture::~DebugOutputCapture() {
  Take();
}

std::string DebugOutputCapture::Take() {
  if (collecting) RemoveVectoredExceptionHandler(handler);
  collecting = false;
  const std::lock_guard guard(textLock);
  return text;
}

#else

#include <gtest/gtest.h>

// The native build writes it to standard error.
DebugOutputCapture::DebugOutputCapture() {
  testing::internal::CaptureStderr();
}

DebugOutputCapture::~DebugOutputCapture() {
  Take();
}

std::string DebugOutputCapture::Take() {
  if (!collecting) return "";
  collecting = false;
  return testing::internal::GetCapturedStderr();
}

#endif
