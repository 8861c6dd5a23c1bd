// SPDX-License-Identifier: MIT
// Calls of the code under test into platform/ that the tests want to see or to fail. The linker
// sends them here (CMakeLists.txt); unless a test says otherwise they go on to the real functions.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace platform {
struct RecursiveLock;
}

/// Everything is as usual again when the object goes. One at a time; any thread may make the calls.
class PlatformWraps {
 public:
  PlatformWraps();  ///< forgets the calls seen so far
  ~PlatformWraps();
  PlatformWraps(const PlatformWraps&) = delete;
  PlatformWraps& operator=(const PlatformWraps&) = delete;

  /// From now on the system has none to give, or cannot convert.
  void HasNoThreads();
  void HasNoLocks(unsigned systemError);
  void HasNoLocalTime();
  /// There is no memory (std::bad_alloc) for the sending of a command that begins so.
  void HasNoMemoryFor(const std::string& command);
  void WorksAgain();

  /// Runs once, on the thread that closes the next socket, just before it does so.
  void BeforeASocketCloses(std::function<void()> action);
  /// Runs once, on the thread that asks for a local time next, before it is told.
  void BeforeALocalTime(std::function<void()> action);

  /// Runs once, on the thread that enters the lock next, before it does.
  void BeforeALockIsEntered(const platform::RecursiveLock* lock, std::function<void()> action);
  /// @return the lock that a call enters, the last one if there are several. No other thread may
  /// enter one meanwhile.
  const platform::RecursiveLock* LockEnteredBy(const std::function<void()>& call);
  /// @return how many locks have been destroyed so far.
  int LocksDestroyed() const;

  /// @return how many blocks that show the busy pointer are being run by all threads together.
  int BusyPointers() const;
  /// @return how many have begun so far.
  int BusyPointersSoFar() const;

  /// @return the sleeps that were asked for, ms, oldest first. Those above a minute are not slept.
  std::vector<int> Sleeps() const;
};
