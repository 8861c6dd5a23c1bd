// SPDX-License-Identifier: MIT
// CWinThread: a worker thread. Differs from the documented class: the object never deletes itself;
// it belongs to whoever began the thread, so that waiting for its end is safe however fast it ends.
#pragma once

#include "framework/base/types.h"

namespace platform {
struct Thread;
}
struct AFX_MODULE_STATE;

using AFX_THREADPROC = UINT (*)(LPVOID parameter);

class CWinThread {
 public:
  /// Waits for the end of the thread if nobody has.
  ~CWinThread();
  CWinThread(const CWinThread&) = delete;
  CWinThread& operator=(const CWinThread&) = delete;

  /// Waits without time limit until the thread has ended. Not from the thread itself.
  void Join();

 private:
  friend CWinThread* AfxBeginThread(AFX_THREADPROC, LPVOID);
  CWinThread(AFX_THREADPROC routine, LPVOID parameter);
  static void Entry(void* self);

  const AFX_THREADPROC m_routine;
  const LPVOID m_parameter;
  AFX_MODULE_STATE* const m_moduleState;  // of the thread that began this one
  platform::Thread* m_thread = nullptr;
};

/// Begins a thread with normal priority and the default stack; it starts at once, in the module
/// state of the caller.
/// @return the thread object, owned by the caller, or null when the system has no thread to give.
CWinThread* AfxBeginThread(AFX_THREADPROC routine, LPVOID parameter);
