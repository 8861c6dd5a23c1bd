// SPDX-License-Identifier: MIT
// Counts access violations of this process, on whichever thread. One inside a window procedure may
// otherwise go unnoticed: the system goes on without the message.
#pragma once

#include <windows.h>

#include <atomic>

namespace ui_test {

/// Counts as long as it lives; one at a time.
class FaultCount {
 public:
  FaultCount() {
    faults = 0;
    handler_ = AddVectoredExceptionHandler(1, &Look);
  }
  ~FaultCount() { RemoveVectoredExceptionHandler(handler_); }
  FaultCount(const FaultCount&) = delete;
  FaultCount& operator=(const FaultCount&) = delete;

  int Count() const { return faults; }

 private:
  static LONG CALLBACK Look(EXCEPTION_POINTERS* exception) {
    if (exception->ExceptionRecord->ExceptionCode == EXCEPTION_ACCESS_VIOLATION) ++faults;
    return EXCEPTION_CONTINUE_SEARCH;
  }

  inline static std::atomic<int> faults = 0;

  void* handler_;
};

}  // namespace ui_test
