// SPDX-License-Identifier: MIT
// A host's end of the wire: sends bytes to a port and waits, with a deadline, for what comes back.
#pragma once

#include <string>

#include "simulator/datagram_socket.h"

namespace simulator {

/// Milliseconds that are long enough for any reply over loopback that was not held back on purpose.
constexpr int kSilenceMs = 100;

class LoopbackClient {
 public:
  LoopbackClient(const std::string& address, uint16_t port)
      : to_(platform::MakeAddress(platform::AddressFromText(address.c_str()), port)) {
    socket_.Open("127.0.0.1", 0);
  }

  void Send(const std::string& bytes) { socket_.Send(bytes, to_); }
  uint16_t Port() const { return socket_.Port(); }

  /// @return the next datagram, or "(nothing)" when none comes in time.
  std::string Receive(int timeoutMs = 5000) {
    std::string bytes;
    if (!socket_.Wait(timeoutMs) || !socket_.Receive(bytes, sender_)) return "(nothing)";
    return bytes;
  }
  std::string Ask(const std::string& bytes) {
    Send(bytes);
    return Receive();
  }
  /// @return true when the last datagram came from where this client sends to.
  bool WasAnsweredByItsServer() const {
    return sender_.addressNetworkOrder == to_.addressNetworkOrder &&
           sender_.portNetworkOrder == to_.portNetworkOrder;
  }

 private:
  DatagramSocket socket_;
  const platform::SocketAddress to_;
  platform::SocketAddress sender_ = {};
};

}  // namespace simulator
