// SPDX-License-Identifier: MIT
// The seam to the system's threads, recursive locks and per-thread values.
#pragma once

#include <cstdint>

namespace platform {

/// A recursive lock. Opaque so that the system's headers stay out of everybody else's files.
struct RecursiveLock;
/// @return a new lock, or null with the system's error number in `error`. Owned by the caller.
RecursiveLock* CreateRecursiveLock(uint32_t& error);
void DestroyRecursiveLock(RecursiveLock* lock);
void EnterRecursiveLock(RecursiveLock* lock);
void LeaveRecursiveLock(RecursiveLock* lock);

/// A running thread. Begun with normal priority and the default stack size; while it runs, the
/// module that holds its code stays loaded.
struct Thread;
using ThreadRoutine = void (*)(void* parameter);
/// @return the thread (owned by the caller, who must join it), or null when it cannot be begun.
Thread* BeginThread(ThreadRoutine routine, void* parameter);
/// Waits without time limit until the thread has ended, then gives its record back.
void JoinThread(Thread* thread);

/// @return the calling thread's number in the system.
uint64_t CurrentThreadNumber();
/// Sleeps at least `durationMs` milliseconds; negative counts as 0.
void SleepMs(int durationMs);

/// One pointer per thread, null at first. Cheaper than the compiler's thread_local here, which
/// goes through a table lookup under a lock.
struct ThreadSlot;
/// @return a slot, or null when the system has none left.
ThreadSlot* CreateThreadSlot();
/// @param slot no longer used by any thread; may be null
void DestroyThreadSlot(ThreadSlot* slot);
void* GetThreadSlot(const ThreadSlot* slot);
void SetThreadSlot(ThreadSlot* slot, void* value);

}  // namespace platform
