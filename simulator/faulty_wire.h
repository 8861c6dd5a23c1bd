// SPDX-License-Identifier: MIT
// A controller's end of the network, as bad as wished: it carries the replies, each when its time
// has come, and does to commands and replies what a FaultChooser says. Owned by whoever answers,
// whose answering thread alone uses it, but for SetFaults and SendUnasked: its owner keeps these
// and Exchange apart.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string_view>
#include <vector>

#include "simulator/datagram_socket.h"
#include "simulator/fault.h"
#include "simulator/scripted_reply.h"
#include "simulator/wire_record.h"

namespace simulator {

class FaultyWire {
 public:
  /// Told of every datagram, in the order in which the wire saw them.
  using Recorder = std::function<void(const WireDatagram& datagram)>;
  /// The controller's part of an exchange; called only when the command arrives.
  using Answerer = std::function<ScriptedReply()>;

  /// @param socket the controller's own @param stranger a socket on another port
  /// Both must outlive the wire.
  FaultyWire(DatagramSocket& socket, DatagramSocket& stranger)
      : socket_(socket), stranger_(stranger) {}

  /// From the next exchange on, which is number 1. @param chooser empty: nothing goes wrong
  void SetFaults(FaultChooser chooser);
  /// Before the first exchange. @param recorder called by whoever lets the wire do something
  void SetRecorder(Recorder recorder) { recorder_ = std::move(recorder); }

  /// One command that came in; its reply is sent by SendWhatIsDue, at once or later.
  void Exchange(std::string_view command, const platform::SocketAddress& host,
                const Answerer& answer);
  /// Bytes that came in and are no command; they are recorded, nothing else.
  void Ignore(std::string_view bytes, const platform::SocketAddress& host) const;
  /// Sends a datagram that nobody asked for, without faults.
  void SendUnasked(std::string_view bytes, const platform::SocketAddress& host);
  /// @return the time as the recorder's datagrams tell it.
  double NowMs() const;
  /// Sends the datagrams whose time has come.
  /// @return how long to wait for the next one, milliseconds, at most longestMs.
  int SendWhatIsDue(int longestMs);

 private:
  using Clock = std::chrono::steady_clock;
  struct Outgoing {
    platform::SocketAddress to;
    WireDatagram datagram;
  };

  void Queue(std::vector<Outgoing> outgoing, int delayMs);
  void RecordNow(WireDatagram datagram) const;
  void RecordAlone(WireDirection direction, std::string_view bytes,
                   const platform::SocketAddress& host) const;

  DatagramSocket& socket_;
  DatagramSocket& stranger_;
  const Clock::time_point begin_ = Clock::now();
  FaultChooser chooser_;
  Recorder recorder_;
  int exchanges_ = 0;
  std::multimap<Clock::time_point, Outgoing> pending_;
  std::vector<Outgoing> held_;  // reordered, until the next exchange
};

}  // namespace simulator
