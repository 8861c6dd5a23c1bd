// SPDX-License-Identifier: MIT
#include "platform/threads.h"

#include <windows.h>

#include <memory>
#include <new>

namespace platform {

struct RecursiveLock {
  CRITICAL_SECTION section;
};

RecursiveLock* CreateRecursiveLock(uint32_t& error) {
  std::unique_ptr<RecursiveLock> lock(new (std::nothrow) RecursiveLock);
  if (!lock) {
    error = ERROR_NOT_ENOUGH_MEMORY;
    return nullptr;
  }
  if (!InitializeCriticalSectionAndSpinCount(&lock->section, 0)) {
    error = GetLastError();
    return nullptr;
  }
  return lock.release();
}

void DestroyRecursiveLock(RecursiveLock* lock) {
  DeleteCriticalSection(&lock->section);
  delete lock;
}

void EnterRecursiveLock(RecursiveLock* lock) {
  EnterCriticalSection(&lock->section);
}

void LeaveRecursiveLock(RecursiveLock* lock) {
  LeaveCriticalSection(&lock->section);
}

struct Thread {
  HANDLE handle;
};

namespace {

struct ThreadStart {
  ThreadRoutine routine;
  void* parameter;
  HMODULE module;
};

// A host may unload the library while one of its threads still runs. So the thread holds a
// reference to its module, and releases it in the one call that never returns here.
DWORD WINAPI ThreadEntry(void* argument) {
  const ThreadStart start = *static_cast<ThreadStart*>(argument);
  delete static_cast<ThreadStart*>(argument);
  start.routine(start.parameter);
  FreeLibraryAndExitThread(start.module, 0);
}

HMODULE HoldThisModule() {
  HMODULE module = nullptr;
  GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                     reinterpret_cast<const wchar_t*>(&ThreadEntry), &module);
  return module;
}

}  // namespace

Thread* BeginThread(ThreadRoutine routine, void* parameter) {
  auto thread = std::make_unique<Thread>();
  auto start = std::make_unique<ThreadStart>(ThreadStart{routine, parameter, nullptr});
  // A thread must not start if its code could be unloaded while it runs.
  start->module = HoldThisModule();
  if (start->module == nullptr) return nullptr;
  ThreadStart* const given = start.release();  // the new thread deletes it
  thread->handle = CreateThread(nullptr, 0, ThreadEntry, given, 0, nullptr);
  if (thread->handle == nullptr) {
    FreeLibrary(given->module);
    delete given;
    return nullptr;
  }
  return thread.release();
}

void JoinThread(Thread* thread) {
  WaitForSingleObject(thread->handle, INFINITE);
  CloseHandle(thread->handle);
  delete thread;
}

uint64_t CurrentThreadNumber() {
  return GetCurrentThreadId();
}

void SleepMs(int durationMs) {
  Sleep(durationMs > 0 ? static_cast<DWORD>(durationMs) : 0);
}

namespace {

// The slot is the index plus one, so that it is never the null pointer.
DWORD SlotIndex(const ThreadSlot* slot) {
  return static_cast<DWORD>(reinterpret_cast<uintptr_t>(slot) - 1);
}

}  // namespace

ThreadSlot* CreateThreadSlot() {
  const DWORD index = TlsAlloc();
  if (index == TLS_OUT_OF_INDEXES) return nullptr;
  return reinterpret_cast<ThreadSlot*>(static_cast<uintptr_t>(index) + 1);
}

void DestroyThreadSlot(ThreadSlot* slot) {
  if (slot != nullptr) TlsFree(SlotIndex(slot));
}

void* GetThreadSlot(const ThreadSlot* slot) {
  // TlsGetValue clears the thread's last error, which belongs to the host.
  const DWORD lastError = GetLastError();
  void* value = TlsGetValue(SlotIndex(slot));
  SetLastError(lastError);
  return value;
}

void SetThreadSlot(ThreadSlot* slot, void* value) {
  TlsSetValue(SlotIndex(slot), value);
}

}  // namespace platform
