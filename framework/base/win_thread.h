// SPDX-License-Identifier: MIT
// CWinThread: a worker thread. Differences from the documented class: the object never deletes
// itself. The code that began the thread owns it, so waiting for the end is safe even if the thread
// ends quickly.
#pragma once

#include "framework/base/types.h"

namespace platform {
struct Thread;
}
struct AFX_MODULE_STATE;

using AFX_THREADPROC = UINT (*)(LPVOID parameter);

class CWinThread {
 public:
  /// Waits for the end of the thread, unless a caller already has.
  ~CWinThread();
  CWinThread(const CWinThread&) = delete;
  CWinThread& operator=(const CWinThread&) = delete;

  /// Waits without a time limit until the thread has ended. Do not call it on the thread itself.
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

/// Begins a thread with normal priority and the default stack. It starts at once, in the module
/// state of the caller.
/// @return the thread object, owned by the caller; null if the system cannot create a thread.
CWinThread* AfxBeginThread(AFX_THREADPROC routine, LPVOID parameter);
