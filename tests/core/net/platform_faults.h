// SPDX-License-Identifier: MIT
// Stand-ins for the system's calls, to make happen what a healthy machine does not show: a send
// that takes half, a receive that fails, memory that runs out, a slow second. The linker puts them
// between the code under test and platform/ (see CMakeLists.txt, "--wrap").
#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>
#include <functional>
#include <string>

#include "platform/sockets.h"

/// While it lives, it holds for the thread that made it, so that a controller in the same process
/// keeps its sockets. One at a time. A call made inside a stand-in goes to the system.
class PlatformFaults {
 public:
  PlatformFaults();
  ~PlatformFaults();
  PlatformFaults(const PlatformFaults&) = delete;
  PlatformFaults& operator=(const PlatformFaults&) = delete;

  // What happens instead of the system's call; the system is asked where there is nothing.
  std::function<int(uint16_t versionWord, platform::SocketStartupData&)> startSockets;
  std::function<platform::SocketHandle()> openSocket;
  std::function<int(platform::SocketHandle, const platform::SocketAddress&)> bindSocket;
  std::function<uint16_t(platform::SocketHandle)> boundPort;
  std::function<bool(const std::string& name, uint32_t& networkAddress)> lookUpHost;
  std::function<int(platform::SocketHandle, const std::string& bytes,
                    const platform::SocketAddress& to)>
      send;
  std::function<platform::ReadWait(platform::SocketHandle, const platform::WaitTime&)> wait;
  std::function<int(platform::SocketHandle, char* bytes, int capacity)> receive;
  std::function<int32_t()> processClockMs;
  std::function<bool(int64_t secondsSince1970, std::tm& local)> localTime;
  /// @return false when there is no such setting; else its text.
  std::function<bool(const std::string& key, const std::string& value, std::string& text)>
      userSetting;
  std::function<bool(std::wstring& folder)> localAppData;

  // What was asked of the system, whether or not there was a stand-in.
  int socketsStarted = 0;
  uint16_t versionWord = 0;  ///< of the last start
  int socketsStopped = 0;
  int socketsOpened = 0;
  int socketsClosed = 0;
  int namesLookedUp = 0;

  /// Memory of this many bytes cannot be had by malloc and realloc, on any thread; 0 for none.
  static std::atomic<size_t> refusedBytes;
  /// strftime writes nothing, on any thread.
  static std::atomic<bool> timesCannotBeWritten;
};
