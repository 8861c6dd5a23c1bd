// SPDX-License-Identifier: MIT
// The Windows body of fault_count.h.
#include <windows.h>

#include <atomic>

#include "tests/support/code_place_win32.h"
#include "tests/support/fault_count.h"

namespace {

std::atomic<int> faults = 0;
std::atomic<void*> lastPlace = nullptr;

bool IsFault(DWORD code) {
  switch (code) {
    case EXCEPTION_ACCESS_VIOLATION:
    case EXCEPTION_DATATYPE_MISALIGNMENT:
    case EXCEPTION_ILLEGAL_INSTRUCTION:
    case EXCEPTION_IN_PAGE_ERROR:
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
    case EXCEPTION_PRIV_INSTRUCTION:
    case EXCEPTION_STACK_OVERFLOW:
      return true;
    default:
      return false;
  }
}

UINT endCode = 0;

LONG CALLBACK End(EXCEPTION_POINTERS* exception) {
  if (IsFault(exception->ExceptionRecord->ExceptionCode))
    TerminateProcess(GetCurrentProcess(), endCode);
  return EXCEPTION_CONTINUE_SEARCH;
}

LONG CALLBACK Look(EXCEPTION_POINTERS* exception) {
  if (IsFault(exception->ExceptionRecord->ExceptionCode)) {
    lastPlace = exception->ExceptionRecord->ExceptionAddress;
    ++faults;
  }
  return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

void CountFaults() {
  AddVectoredExceptionHandler(1, &Look);
}

void EndAtFaults(int code) {
  endCode = static_cast<UINT>(code);
  AddVectoredExceptionHandler(1, &End);
}

Faults TakeFaults() {
  const int count = faults.exchange(0);
  return count == 0 ? Faults()
                    : Faults{count, CodePlace(reinterpret_cast<DWORD64>(lastPlace.load())).data()};
}
