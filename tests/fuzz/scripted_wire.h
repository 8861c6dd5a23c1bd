// SPDX-License-Identifier: MIT
// A stand-in for the platform's sockets, its clock and its user settings: the whole of their
// declarations with bodies that do as an input says. A program that has this file among its own
// sources never gets the platform library's bodies. An exchange takes no time. One thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/sockets.h"

/// What the next calls are answered, and what was asked. Reset before each input.
struct ScriptedWire {
  // Opening.
  bool hasSockets = true;
  bool knowsHosts = true;
  bool canBind = true;

  // Sending: at most so many bytes a call; the call of this number (from 0) fails.
  int bytesPerSend = 1 << 30;
  int failingSend = -1;

  // Waiting.
  platform::ReadWait wait = {1, true};
  uint32_t waitTakesMs = 0;

  // Receiving.
  bool receiveFails = false;
  std::string datagram;  ///< what the next receive reads; empty is an empty datagram

  int32_t clockMs = 0;

  // What was asked.
  std::string sent;  ///< all bytes that were taken for sending
  int sends = 0;
  int receives = 0;
  int lastReceiveCapacity = 0;
  platform::WaitTime lastTimeOut = {-1, -1};
  int socketsOpened = 0;
  std::vector<platform::SocketHandle> closed;  ///< sockets, in the order they were closed
};

/// The one wire of the process.
ScriptedWire& TheWire();

/// The address that the stand-in understands as a number; every other is looked up as a name.
inline constexpr char kNumericHost[] = "10.0.0.1";
/// The local port of every socket.
inline constexpr uint16_t kScriptedLocalPort = 40000;
