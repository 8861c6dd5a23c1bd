// SPDX-License-Identifier: MIT
// The Windows body of crash_report.h: walks the stack with the unwind tables that every 64-bit
// module carries, so that it needs neither symbols nor another library.
#include <windows.h>

#include <csignal>
#include <cstdio>

#include "tests/support/code_place_win32.h"
#include "tests/support/crash_report.h"

namespace {

void PrintStack(CONTEXT context) {
  // The first frame may be 0 (a call of a null pointer), a later 0 is the end of the stack.
  for (int frame = 0; frame < 60 && (frame == 0 || context.Rip != 0); ++frame) {
    std::fprintf(stderr, "  at %s\n", CodePlace(context.Rip).data());
    DWORD64 base = 0;
    RUNTIME_FUNCTION* function = RtlLookupFunctionEntry(context.Rip, &base, nullptr);
    if (function == nullptr) {
      // A function without an entry has no frame: its return address is on top of the stack.
      context.Rip = *reinterpret_cast<DWORD64*>(context.Rsp);
      context.Rsp += 8;
      continue;
    }
    void* handlerData = nullptr;
    DWORD64 establisher = 0;
    RtlVirtualUnwind(UNW_FLAG_NHANDLER, base, context.Rip, function, &context, &handlerData,
                     &establisher, nullptr);
  }
  std::fflush(stderr);
}

LONG WINAPI OnUnhandledException(EXCEPTION_POINTERS* exception) {
  const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
  std::fflush(stdout);
  std::fprintf(stderr, "\ncrash: exception 0x%08lx in thread %lu\n", record.ExceptionCode,
               GetCurrentThreadId());
  PrintStack(*exception->ContextRecord);
  return EXCEPTION_EXECUTE_HANDLER;
}

void OnAbort(int) {
  CONTEXT context;
  RtlCaptureContext(&context);
  std::fflush(stdout);
  std::fprintf(stderr, "\nabort in thread %lu\n", GetCurrentThreadId());
  PrintStack(context);
}

}  // namespace

void InstallCrashReport() {
  SetUnhandledExceptionFilter(OnUnhandledException);
  std::signal(SIGABRT, OnAbort);
}
