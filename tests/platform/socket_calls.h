// SPDX-License-Identifier: MIT
// The system's socket functions as platform/ calls them: seen by the test, and answered by it where
// a healthy machine would not. The linker puts them in between (CMakeLists.txt).
#pragma once

#include <string>
#include <vector>

/// Watches the calls for as long as it lives. One at a time, in a program of one thread.
class SocketCalls {
 public:
  SocketCalls();
  ~SocketCalls();
  SocketCalls(const SocketCalls&) = delete;
  SocketCalls& operator=(const SocketCalls&) = delete;

  /// Every name has these dotted addresses from now on, in this order.
  std::vector<std::string> addressesOfEveryName;
  /// The system does not tell the address that a socket is bound to.
  bool boundAddressIsUnknown = false;

  /// "shutdown both" (or another way) and "close", oldest first.
  std::vector<std::string> closing;
  /// Lists of addresses that were taken from the system and not given back.
  int listsHeld = 0;
};
