// SPDX-License-Identifier: MIT
#include "tests/library/engine/platform_wraps.h"

#include <atomic>
#include <mutex>
#include <new>
#include <utility>

#include "platform/clock.h"
#include "platform/sockets.h"
#include "platform/threads.h"
#include "platform/user_notice.h"

namespace {

constexpr int kLongestRealSleepMs = 60'000;

std::atomic<bool> noThreads = false;
std::atomic<bool> noLocks = false;
std::atomic<bool> noLocalTime = false;
std::atomic<uint32_t> lockError = 0;

std::mutex commandLock;
std::string commandWithoutMemory;  // guarded by commandLock; empty for none

std::mutex sleepsLock;
std::vector<int> sleeps;  // guarded by sleepsLock

std::atomic<int> busyPointers = 0;
std::atomic<int> busyPointersSoFar = 0;

// What a test wants to happen at the next call, of any thread, and not again.
class Once {
 public:
  void Set(std::function<void()> action) {
    const std::lock_guard guard(lock);
    next = std::move(action);
  }
  void Run() {
    std::function<void()> action;
    {
      const std::lock_guard guard(lock);
      action.swap(next);
    }
    if (action) action();
  }

 private:
  std::mutex lock;
  std::function<void()> next;  // guarded by lock
};

Once beforeASocketCloses;
Once beforeALocalTime;
Once beforeTheWatchedLock;

std::atomic<const platform::RecursiveLock*> watchedLock = nullptr;
std::atomic<const platform::RecursiveLock*> lastEntered = nullptr;
std::atomic<int> locksDestroyed = 0;

}  // namespace

PlatformWraps::PlatformWraps() {
  const std::lock_guard guard(sleepsLock);
  sleeps.clear();
  busyPointersSoFar = 0;
  locksDestroyed = 0;
}

PlatformWraps::~PlatformWraps() {
  WorksAgain();
}

void PlatformWraps::HasNoThreads() {
  noThreads = true;
}

void PlatformWraps::HasNoLocks(unsigned systemError) {
  lockError = systemError;
  noLocks = true;
}

void PlatformWraps::HasNoLocalTime() {
  noLocalTime = true;
}

void PlatformWraps::HasNoMemoryFor(const std::string& command) {
  const std::lock_guard guard(commandLock);
  commandWithoutMemory = command;
}

void PlatformWraps::WorksAgain() {
  noThreads = noLocks = noLocalTime = false;
  HasNoMemoryFor("");
  BeforeASocketCloses({});
  BeforeALocalTime({});
  BeforeALockIsEntered(nullptr, {});
}

void PlatformWraps::BeforeASocketCloses(std::function<void()> action) {
  beforeASocketCloses.Set(std::move(action));
}

void PlatformWraps::BeforeALocalTime(std::function<void()> action) {
  beforeALocalTime.Set(std::move(action));
}

void PlatformWraps::BeforeALockIsEntered(const platform::RecursiveLock* lock,
                                         std::function<void()> action) {
  beforeTheWatchedLock.Set(std::move(action));
  watchedLock = lock;
}

const platform::RecursiveLock* PlatformWraps::LockEnteredBy(const std::function<void()>& call) {
  lastEntered = nullptr;
  call();
  return lastEntered;
}

int PlatformWraps::LocksDestroyed() const {
  return locksDestroyed;
}

int PlatformWraps::BusyPointers() const {
  return busyPointers;
}

int PlatformWraps::BusyPointersSoFar() const {
  return busyPointersSoFar;
}

std::vector<int> PlatformWraps::Sleeps() const {
  const std::lock_guard guard(sleepsLock);
  return sleeps;
}

// The linker's names: __wrap_ is called by the code under test, __real_ is platform's own.
#ifdef _WIN32
#define CLOSE_SOCKET(kind) kind##_ZN8platform11CloseSocketEy
#define LOCAL_TIME(kind) kind##_ZN8platform9LocalTimeExR2tm
#define SEND_DATAGRAM(kind) kind##_ZN8platform12SendDatagramEyPKciRKNS_13SocketAddressE
#else
#define CLOSE_SOCKET(kind) kind##_ZN8platform11CloseSocketEi
#define LOCAL_TIME(kind) kind##_ZN8platform9LocalTimeElR2tm
#define SEND_DATAGRAM(kind) kind##_ZN8platform12SendDatagramEiPKciRKNS_13SocketAddressE
#endif

extern "C" {

platform::Thread* __real__ZN8platform11BeginThreadEPFvPvES0_(platform::ThreadRoutine, void*);
platform::Thread* __wrap__ZN8platform11BeginThreadEPFvPvES0_(platform::ThreadRoutine routine,
                                                             void* parameter) {
  if (noThreads) return nullptr;
  return __real__ZN8platform11BeginThreadEPFvPvES0_(routine, parameter);
}

platform::RecursiveLock* __real__ZN8platform19CreateRecursiveLockERj(uint32_t&);
platform::RecursiveLock* __wrap__ZN8platform19CreateRecursiveLockERj(uint32_t& error) {
  if (!noLocks) return __real__ZN8platform19CreateRecursiveLockERj(error);
  error = lockError;
  return nullptr;
}

void __real__ZN8platform18EnterRecursiveLockEPNS_13RecursiveLockE(platform::RecursiveLock*);
void __wrap__ZN8platform18EnterRecursiveLockEPNS_13RecursiveLockE(platform::RecursiveLock* lock) {
  if (lock == watchedLock) beforeTheWatchedLock.Run();
  __real__ZN8platform18EnterRecursiveLockEPNS_13RecursiveLockE(lock);
  lastEntered = lock;
}

void __real__ZN8platform20DestroyRecursiveLockEPNS_13RecursiveLockE(platform::RecursiveLock*);
void __wrap__ZN8platform20DestroyRecursiveLockEPNS_13RecursiveLockE(platform::RecursiveLock* lock) {
  ++locksDestroyed;
  __real__ZN8platform20DestroyRecursiveLockEPNS_13RecursiveLockE(lock);
}

void __real__ZN8platform7SleepMsEi(int);
void __wrap__ZN8platform7SleepMsEi(int durationMs) {
  {
    const std::lock_guard guard(sleepsLock);
    sleeps.push_back(durationMs);
  }
  if (durationMs <= kLongestRealSleepMs) __real__ZN8platform7SleepMsEi(durationMs);
}

bool LOCAL_TIME(__real_)(int64_t, std::tm&);
bool LOCAL_TIME(__wrap_)(int64_t secondsSince1970, std::tm& local) {
  beforeALocalTime.Run();
  return !noLocalTime && LOCAL_TIME(__real_)(secondsSince1970, local);
}

void CLOSE_SOCKET(__real_)(platform::SocketHandle);
void CLOSE_SOCKET(__wrap_)(platform::SocketHandle socket) {
  beforeASocketCloses.Run();
  CLOSE_SOCKET(__real_)(socket);
}

void* __real__ZN8platform15ShowBusyPointerEv();
void* __wrap__ZN8platform15ShowBusyPointerEv() {
  ++busyPointers;
  ++busyPointersSoFar;
  return __real__ZN8platform15ShowBusyPointerEv();
}

void __real__ZN8platform14RestorePointerEPv(void*);
void __wrap__ZN8platform14RestorePointerEPv(void* previous) {
  __real__ZN8platform14RestorePointerEPv(previous);
  --busyPointers;
}

int SEND_DATAGRAM(__real_)(platform::SocketHandle, const char*, int,
                           const platform::SocketAddress&);
int SEND_DATAGRAM(__wrap_)(platform::SocketHandle socket, const char* bytes, int count,
                           const platform::SocketAddress& to) {
  {
    const std::lock_guard guard(commandLock);
    const std::string& command = commandWithoutMemory;
    if (!command.empty() && std::string(bytes, count).starts_with(command)) throw std::bad_alloc();
  }
  return SEND_DATAGRAM(__real_)(socket, bytes, count, to);
}

}  // extern "C"
