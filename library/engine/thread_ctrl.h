// SPDX-License-Identifier: MIT
// CThreadCtrl: one worker thread, one lock and a polling rhythm. A derived class fills in the
// hooks. StartThread and EndThread are the host's side, one caller at a time; the hooks OnPoll and
// OnProcess run on the worker.
#pragma once

#include <cstdint>

#include "framework/base/critical_section.h"
#include "framework/base/owner_window.h"
#include "framework/base/types.h"
#include "framework/base/win_thread.h"

class CThreadCtrl {
 public:
  /// Throws CResourceException when the lock cannot be had.
  CThreadCtrl();
  /// Drops the owner window and waits for a worker that still runs; the hooks of a derived class
  /// are gone by then.
  virtual ~CThreadCtrl();
  CThreadCtrl(const CThreadCtrl&) = delete;
  CThreadCtrl& operator=(const CThreadCtrl&) = delete;

  /// The worker's loop: OnProcess, OnPoll, sleep, until one of the hooks answers 0.
  virtual void Run();

  // Hooks, in the order of the virtual table. Unless said otherwise the base answers 1.
  virtual void OnReset() {}              ///< puts the derived state into its initial values
  virtual int OnPoll() { return 1; }     ///< regular work after the queue; 0 ends the loop
  virtual int OnProcess() { return 1; }  ///< drains pending work; 0 ends the loop
  virtual int OnStart() { return 1; }    ///< before the thread begins; 0 aborts the start
  virtual int OnStarted() { return 1; }  ///< after it began; its result is the start's
  virtual int OnEnd() { return 1; }      ///< before the thread is joined: ask the loop to end
  virtual int OnEnded() { return 1; }    ///< after the thread is joined

  /// @return 1 when the thread runs, else 0; 0 also when OnStarted fails, with the thread running.
  int StartThread();
  /// Waits for the thread without a time limit. @return 1.
  int EndThread();

  /// Keeps a window of the host as the parent of the library's windows. Replaces the earlier one.
  /// @param window not owned; may be null
  void AttachOwner(HWND window);
  void DetachOwner();
  /// @return the window kept, or null.
  HWND OwnerWindow();

  void Lock() ACQUIRE(lock) { lock.Lock(); }
  void Unlock() RELEASE(lock) { lock.Unlock(); }
  /// @return milliseconds the worker sleeps between cycles while it is not in a hurry.
  int32_t Period() const { return period; }

 protected:
  friend class ThreadCtrlProbe;  // the tests' view of the rhythm

  CWinThread* thread = nullptr;                    // owned; null while no worker runs
  COwnerWindow* owner GUARDED_BY(lock) = nullptr;  // owned; the window in it is the host's
  int32_t running = 0;                    // nothing clears it: the loop ends through a hook
  int32_t fastPoll GUARDED_BY(lock) = 0;  // non-zero halves the sleep
  CCriticalSection lock;                  // guards what the host's threads and the worker share
  int32_t period = 100;                   // ms; constant
};
