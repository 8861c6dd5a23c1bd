// SPDX-License-Identifier: MIT
// Operating-system seam: threads, recursive locks and per-thread values.
#pragma once

#include <cstdint>

namespace platform {

/// A recursive lock. Opaque, so that other files do not include the system's headers.
struct RecursiveLock;
/// @return a new lock, or null with the system's error number in `error`. Owned by the caller.
RecursiveLock* CreateRecursiveLock(uint32_t& error);
void DestroyRecursiveLock(RecursiveLock* lock);
void EnterRecursiveLock(RecursiveLock* lock);
void LeaveRecursiveLock(RecursiveLock* lock);

/// A running thread, with normal priority and the default stack size. While it runs, the module
/// that holds its code stays loaded.
struct Thread;
using ThreadRoutine = void (*)(void* parameter);
/// @return the thread (the caller owns it and must join it), or null if it cannot be started.
Thread* BeginThread(ThreadRoutine routine, void* parameter);
/// Waits without a time limit until the thread has ended, then frees its record.
void JoinThread(Thread* thread);

/// @return the system's number of the calling thread.
uint64_t CurrentThreadNumber();
/// Sleeps at least `durationMs` milliseconds; negative counts as 0.
void SleepMs(int durationMs);

/// One pointer per thread, null at first. Faster than the compiler's thread_local on this platform,
/// which looks up a table under a lock.
struct ThreadSlot;
/// @return a slot, or null if the system has none left.
ThreadSlot* CreateThreadSlot();
/// @param slot no longer used by any thread; may be null
void DestroyThreadSlot(ThreadSlot* slot);
void* GetThreadSlot(const ThreadSlot* slot);
void SetThreadSlot(ThreadSlot* slot, void* value);

}  // namespace platform
