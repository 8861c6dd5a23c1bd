// SPDX-License-Identifier: MIT
#include "platform/threads.h"

#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <chrono>
#include <cstdint>
#include <memory>
#include <mutex>
#include <system_error>
#include <thread>

namespace platform {

struct RecursiveLock {
  std::recursive_mutex mutex;
};

RecursiveLock* CreateRecursiveLock(uint32_t& error) {
  error = 0;
  return new RecursiveLock;
}

void DestroyRecursiveLock(RecursiveLock* lock) {
  delete lock;
}

void EnterRecursiveLock(RecursiveLock* lock) {
  lock->mutex.lock();
}

void LeaveRecursiveLock(RecursiveLock* lock) {
  lock->mutex.unlock();
}

struct Thread {
  std::thread thread;
};

Thread* BeginThread(ThreadRoutine routine, void* parameter) {
  try {
    return new Thread{std::thread(routine, parameter)};
  } catch (const std::system_error&) {
    return nullptr;
  }
}

void JoinThread(Thread* thread) {
  thread->thread.join();
  delete thread;
}

uint64_t CurrentThreadNumber() {
  return static_cast<uint64_t>(syscall(SYS_gettid));
}

void SleepMs(int durationMs) {
  if (durationMs > 0) std::this_thread::sleep_for(std::chrono::milliseconds(durationMs));
}

namespace {

pthread_key_t SlotKey(const ThreadSlot* slot) {
  return static_cast<pthread_key_t>(reinterpret_cast<uintptr_t>(slot) - 1);
}

}  // namespace

// The slot is the key plus one, so that it is never the null pointer.
ThreadSlot* CreateThreadSlot() {
  pthread_key_t key = 0;
  if (pthread_key_create(&key, nullptr) != 0) return nullptr;
  return reinterpret_cast<ThreadSlot*>(static_cast<uintptr_t>(key) + 1);
}

void DestroyThreadSlot(ThreadSlot* slot) {
  if (slot != nullptr) pthread_key_delete(SlotKey(slot));
}

void* GetThreadSlot(const ThreadSlot* slot) {
  return pthread_getspecific(SlotKey(slot));
}

void SetThreadSlot(ThreadSlot* slot, void* value) {
  pthread_setspecific(SlotKey(slot), value);
}

}  // namespace platform
