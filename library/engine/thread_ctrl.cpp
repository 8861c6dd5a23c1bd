// SPDX-License-Identifier: MIT
#include "library/engine/thread_ctrl.h"

#include "framework/base/wait_cursor.h"
#include "platform/threads.h"

namespace {

UINT ThreadRoutine(LPVOID object) {
  static_cast<CThreadCtrl*>(object)->Run();
  return 0;
}

}  // namespace

CThreadCtrl::CThreadCtrl() = default;

CThreadCtrl::~CThreadCtrl() {
  DetachOwner();
  CThreadCtrl::EndThread();
}

void CThreadCtrl::Run() {
  running = 1;
  do {
    if (OnProcess() == 0) return;
    if (OnPoll() == 0) return;
    Lock();
    const int32_t sleepMs = fastPoll ? period / 2 : period;
    Unlock();
    platform::SleepMs(sleepMs);
  } while (running);
}

int CThreadCtrl::StartThread() {
  if (OnStart() == 0) return 0;
  thread = AfxBeginThread(&ThreadRoutine, this);
  if (thread == nullptr) return 0;
  return OnStarted() ? 1 : 0;
}

int CThreadCtrl::EndThread() {
  OnEnd();
  if (thread != nullptr) {
    const CWaitCursor busy;
    thread->Join();
    delete thread;
    thread = nullptr;
  }
  OnEnded();
  return 1;
}

void CThreadCtrl::AttachOwner(HWND window) {
  const CSingleLock guard(lock);
  DetachOwner();
  owner = new COwnerWindow;
  owner->Attach(window);
}

void CThreadCtrl::DetachOwner() {
  const CSingleLock guard(lock);
  if (owner == nullptr) return;
  owner->Detach();
  delete owner;
  owner = nullptr;
}

HWND CThreadCtrl::OwnerWindow() {
  const CSingleLock guard(lock);
  return owner == nullptr ? nullptr : owner->m_hWnd;
}
