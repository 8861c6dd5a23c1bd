// SPDX-License-Identifier: MIT
// ControllerLink: single exchanges with one controller, each through a socket of its own. Owned by
// the worker; one thread at a time.
//
// Why not the driver's CUdpLink: its behaviour is part of the driver. It keeps one socket, so a
// reply that comes late or twice answers the next command with the same key; it looks at no
// sender, keeps bytes that were left over, and cannot be interrupted. Here the socket goes when its
// exchange has ended, and the last ports are not used again for a while: a reply can only ever
// reach the exchange that asked for it. A socket costs some 10 microseconds.
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
  kSilent,     ///< nothing came in time, or nothing could be sent
  kUnusable,   ///< an answer came that is cut or empty
  kMismatch,   ///< an answer came that begins with another key, or with none
  kAbandoned,  ///< given up before the time was over, as the caller wished
};

struct Answer {
  Exchanged how = Exchanged::kSilent;
  std::string line;  ///< what came, without line end; empty when nothing did
  MonotonicTime sentAt;
  MonotonicTime endedAt;

  bool IsAnswered() const { return how == Exchanged::kAnswered; }
};

/// Lets an exchange end early.
struct Patience {
  MonotonicTime until = MonotonicTime::max();      ///< given up then
  const std::atomic<bool>* interrupted = nullptr;  ///< given up when true; may be null
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

  /// Sends a command and waits for its answer, for up to kReplyTimeOut. Datagrams of others are
  /// left out. Failures are recorded in the journal, except those of abandoned exchanges and of
  /// sending.
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
  // Longer ago than a reply can be under way; at ten polls a second six seconds.
  std::array<uint16_t, 64> lastPorts_ = {};
  size_t nextPort_ = 0;
};

}  // namespace velquin
