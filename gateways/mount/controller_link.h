// SPDX-License-Identifier: MIT
// ControllerLink: single exchanges with one controller, each through a new socket. Owned by the
// worker; one thread at a time.
//
// The driver's CUdpLink does not fit, and its behaviour is part of the driver. It keeps one socket,
// so a late or duplicate reply answers the next command with the same key. It does not check the
// sender, keeps left-over bytes, and cannot be interrupted. Here the socket closes when its
// exchange has ended, and the last ports are not reused for a while: a reply can only reach the
// exchange that asked for it. A socket costs about 10 microseconds.
#pragma once

#include <array>
#include <atomic>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>

#include "gateways/mount/exchange_journal.h"
#include "gateways/mount/snapshot.h"
#include "platform/sockets.h"

namespace velquin {

/// How an exchange ended.
enum class Exchanged {
  kAnswered,
  kSilent,     ///< no answer arrived in time, or sending failed
  kUnusable,   ///< the answer is truncated or empty
  kMismatch,   ///< the answer begins with another key, or without a key
  kAbandoned,  ///< ended early, as the caller asked
};

struct Answer {
  Exchanged how = Exchanged::kSilent;
  std::string line;  ///< the answer without line end; empty if there was none
  MonotonicTime sentAt;
  MonotonicTime endedAt;

  bool IsAnswered() const { return how == Exchanged::kAnswered; }
};

/// Lets an exchange end early.
struct Patience {
  MonotonicTime until = MonotonicTime::max();      ///< the exchange ends at this time
  const std::atomic<bool>* interrupted = nullptr;  ///< the exchange ends when true; may be null
};

class ControllerLink {
 public:
  static constexpr std::chrono::milliseconds kReplyTimeOut{500};

  /// Starts the system's sockets. @param journal outlives the link
  explicit ControllerLink(ExchangeJournal& journal);
  ~ControllerLink();
  ControllerLink(const ControllerLink&) = delete;
  ControllerLink& operator=(const ControllerLink&) = delete;

  /// @param address network byte order @param port host order
  void SetPeer(uint32_t address, uint16_t port);

  /// Sends a command and waits for its answer, for up to kReplyTimeOut. Datagrams from other
  /// senders are ignored. Failures are recorded in the journal, except abandoned exchanges and
  /// failures to send.
  /// @param command without line end
  /// @param otherKey a second key that an answer may have, "$MTGTS" for example; may be null
  Answer Exchange(const std::string& command, const Patience& patience = {},
                  const char* otherKey = nullptr);

 private:
  class Socket;

  bool OpenOnNewPort(Socket& socket);
  void Receive(const Socket& socket, const std::string& command, const Patience& patience,
               const char* otherKey, Answer& answer) const;

  ExchangeJournal& journal_;
  platform::SocketStartupData startupData_ = {};
  platform::SocketAddress peer_;
  // Longer than a reply can be in transit: six seconds at ten polls a second.
  std::array<uint16_t, 64> lastPorts_ = {};
  size_t nextPort_ = 0;
};

}  // namespace velquin
