// SPDX-License-Identifier: MIT
// A peer on the loopback that answers every datagram with one status line, as fast as it can.
#pragma once

#include <atomic>
#include <thread>

#include "platform/sockets.h"

class AnsweringPeer {
 public:
  static constexpr char kAnswer[] =
      "$MTSTA=61365.51234567,1,0,0,0,45.000000,90.000000,0.000000,5.575533,22.014500,4\r\n";

  /// Binds a free port of 127.0.0.1 and starts answering.
  AnsweringPeer();
  ~AnsweringPeer();

  const char* Host() const { return "127.0.0.1"; }
  uint16_t Port() const { return port; }

 private:
  void AnswerUntilStopped();

  platform::SocketHandle socket;
  uint16_t port = 0;
  std::atomic<bool> stopping = false;
  std::thread thread;
};
