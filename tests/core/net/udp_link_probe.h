// SPDX-License-Identifier: MIT
// What a link keeps to itself, for tests.
#pragma once

#include <cstdint>
#include <string>

#include "core/net/udp_link.h"

class UdpLinkProbe {
 public:
  explicit UdpLinkProbe(CUdpLink& link) : link_(link) {}

  bool Connected() const { return link_.connected != 0; }
  platform::WaitTime TimeOut() const { return link_.timeOut; }
  uint32_t RemoteAddress() const { return link_.remoteAddress; }
  uint16_t RemotePort() const { return link_.remotePort; }
  const platform::SocketAddress& RemoteSocketAddress() const { return link_.remoteSocketAddress; }
  uint16_t LocalPort() const { return link_.localPort; }
  platform::SocketHandle Socket() const { return link_.socketHandle; }

  const char* Buffer() const { return link_.receiveBuffer; }
  int BytesHeld() const { return link_.bytesHeld; }
  int Capacity() const { return link_.bufferCapacity; }
  /// @return the unread bytes; empty also while the link is closed.
  std::string Unread() const {
    return Buffer() == nullptr ? "" : std::string(Buffer(), static_cast<size_t>(BytesHeld()));
  }

  static std::string CommandKey(const std::string& line) {
    return CUdpLink::CommandKey(line.c_str()).GetString();
  }
  int ReceiveChunk() { return link_.ReceiveChunk(); }

 private:
  CUdpLink& link_;
};
