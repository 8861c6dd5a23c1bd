// SPDX-License-Identifier: MIT
#include "framework/base/critical_section.h"

#include <cstdint>

#include "framework/base/exceptions.h"
#include "platform/threads.h"

CCriticalSection::CCriticalSection() {
  uint32_t error = 0;
  m_lock = platform::CreateRecursiveLock(error);
  if (m_lock == nullptr) AfxThrowResourceException(error);
}

CCriticalSection::~CCriticalSection() {
  platform::DestroyRecursiveLock(m_lock);
}

void CCriticalSection::Lock() {
  platform::EnterRecursiveLock(m_lock);
}

void CCriticalSection::Unlock() {
  platform::LeaveRecursiveLock(m_lock);
}
