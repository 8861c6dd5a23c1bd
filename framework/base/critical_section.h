// SPDX-License-Identifier: MIT
// CCriticalSection: the recursive lock. Differences from the documented class: no common base with
// other locks; Lock and Unlock return nothing, since they cannot fail.
#pragma once

#include "framework/base/thread_annotations.h"

namespace platform {
struct RecursiveLock;
}

class CAPABILITY("mutex") CCriticalSection {
 public:
  /// Throws CResourceException with the system's error if the lock cannot be created.
  CCriticalSection();
  ~CCriticalSection();
  CCriticalSection(const CCriticalSection&) = delete;
  CCriticalSection& operator=(const CCriticalSection&) = delete;

  void Lock() ACQUIRE();
  void Unlock() RELEASE();

 private:
  platform::RecursiveLock* m_lock;
};

/// Holds a lock until the end of the block.
class SCOPED_CAPABILITY CSingleLock {
 public:
  explicit CSingleLock(CCriticalSection& lock) ACQUIRE(lock) : m_lock(lock) { m_lock.Lock(); }
  ~CSingleLock() RELEASE() { m_lock.Unlock(); }
  CSingleLock(const CSingleLock&) = delete;
  CSingleLock& operator=(const CSingleLock&) = delete;

 private:
  CCriticalSection& m_lock;
};
