// SPDX-License-Identifier: MIT
// One bound IPv4 datagram socket, given back when the object goes. It holds the system's sockets
// started while it lives. One thread at a time, except that any thread may send while another waits
// or receives: the system keeps datagrams apart.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/sockets.h"

namespace simulator {

class DatagramSocket {
 public:
  DatagramSocket();
  ~DatagramSocket();
  DatagramSocket(const DatagramSocket&) = delete;
  DatagramSocket& operator=(const DatagramSocket&) = delete;

  /// Opens and binds. @param address dotted IPv4 address of this machine; @param port 0 lets the
  /// system choose. @return false when it is no address, not of this machine or in use.
  bool Open(const std::string& address, uint16_t port);
  /// Gives the socket back; harmless when not open.
  void Close();
  bool IsOpen() const { return socket_ != platform::kInvalidSocket; }
  /// @return the bound port; 0 when not open.
  uint16_t Port() const;

  /// Waits for a datagram. @return true when one can be received.
  bool Wait(int timeoutMs) const;
  /// Receives one datagram of any length. @return false on an error.
  bool Receive(std::string& bytes, platform::SocketAddress& sender);
  /// Sends one datagram, possibly empty; what cannot be sent is lost, as datagrams may be.
  void Send(std::string_view bytes, const platform::SocketAddress& to);

 private:
  platform::SocketStartupData startup_ = {};
  platform::SocketHandle socket_ = platform::kInvalidSocket;
};

}  // namespace simulator
