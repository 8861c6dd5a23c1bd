// SPDX-License-Identifier: MIT
// Answers command lines that come in datagrams, over a network that may be as bad as wished.
// Started and stopped by its owner's thread; the lines are answered on a thread of its own, one
// after the other.
#pragma once

#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <thread>

#include "simulator/datagram_socket.h"
#include "simulator/faulty_wire.h"

namespace simulator {

class UdpServer {
 public:
  /// Gives the answer to one line, both without line end. Called on the server's thread.
  using Answerer = std::function<std::string(std::string_view line)>;

  /// @param faults what goes wrong with each line and its answer; empty: nothing
  /// @param recorder told of every datagram on the server's thread; may be empty
  explicit UdpServer(Answerer answerer, FaultChooser faults = {},
                     FaultyWire::Recorder recorder = {});
  ~UdpServer() { Stop(); }
  UdpServer(const UdpServer&) = delete;
  UdpServer& operator=(const UdpServer&) = delete;

  /// Binds and begins to answer: each line of a datagram that "\r\n" ends gets a datagram back,
  /// with "\r\n" at its end. What has no line end or is empty gets none.
  /// @param port 0 lets the system choose
  /// @return false when it runs already or the address cannot be had.
  bool Start(const std::string& address, uint16_t port);
  /// Stops answering and waits for the thread; harmless when not running.
  void Stop();
  /// @return the bound port; 0 when not running.
  uint16_t Port() const { return socket_.Port(); }

 private:
  void Run();
  void AnswerLines(std::string_view datagram, const platform::SocketAddress& sender);

  const Answerer answerer_;
  // Used by thread_ while that runs.
  DatagramSocket socket_;
  DatagramSocket stranger_;
  FaultyWire wire_{socket_, stranger_};
  std::atomic<bool> stopping_ = false;
  std::thread thread_;
};

}  // namespace simulator
