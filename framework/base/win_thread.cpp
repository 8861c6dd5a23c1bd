// SPDX-License-Identifier: MIT
#include "framework/base/win_thread.h"

#include <memory>

#include "framework/base/module_state.h"
#include "platform/threads.h"

CWinThread::CWinThread(AFX_THREADPROC routine, LPVOID parameter)
    : m_routine(routine), m_parameter(parameter), m_moduleState(AfxGetModuleState()) {}

CWinThread::~CWinThread() {
  Join();
}

void CWinThread::Join() {
  if (m_thread == nullptr) return;
  platform::JoinThread(m_thread);
  m_thread = nullptr;
}

void CWinThread::Entry(void* self) {
  const auto* thread = static_cast<const CWinThread*>(self);
  AFX_MANAGE_STATE(thread->m_moduleState);
  thread->m_routine(thread->m_parameter);
}

CWinThread* AfxBeginThread(AFX_THREADPROC routine, LPVOID parameter) {
  std::unique_ptr<CWinThread> thread(new CWinThread(routine, parameter));
  thread->m_thread = platform::BeginThread(&CWinThread::Entry, thread.get());
  return thread->m_thread == nullptr ? nullptr : thread.release();
}
