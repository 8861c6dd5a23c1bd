// SPDX-License-Identifier: MIT
// A controller for tests: it answers from a table, as well or as badly as the test wishes, and
// keeps every datagram it was sent. It has a loopback address of its own, so that tests, native and
// under Wine, run side by side. All members may be called from any thread; a thread of its own
// answers.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "simulator/datagram_socket.h"
#include "simulator/faulty_wire.h"
#include "simulator/scripted_reply.h"

namespace simulator {

/// One datagram that came in.
struct ReceivedDatagram {
  std::string text;   ///< without a "\r\n" at its end
  std::string bytes;  ///< as it came
  double timeMs;      ///< since the controller was made
  uint16_t fromPort;
};

/// Wherever a command is named, it is the whole line without line end; a name that ends in "="
/// stands for every setting of that key. A reply to the whole line goes before one to its key.
class ScriptedController {
 public:
  static constexpr uint16_t kPort = 60023;  ///< the port every controller listens on

  /// Begins to listen; silent to everything. Throws std::runtime_error without a free address.
  /// @param patienceMs how long to wait for an address that others use
  explicit ScriptedController(int patienceMs = 60000);
  ~ScriptedController();
  ScriptedController(const ScriptedController&) = delete;
  ScriptedController& operator=(const ScriptedController&) = delete;

  /// @return the dotted address it listens on, somewhere in 127.0.0.0/8.
  const std::string& Address() const { return address_; }
  /// @return true where several controllers can listen at the same time.
  static bool CanStandBesideOthers();

  // The table. Each replaces what was said about the command before.
  void Answers(const std::string& command, const ScriptedReply& reply);
  /// The replies one after the other, then the last one for ever.
  void AnswersInTurn(const std::string& command, const std::vector<ScriptedReply>& replies);
  void AnswersRaw(const std::string& command, const std::string& bytes);
  void AnswersDatagrams(const std::string& command, const std::vector<std::string>& datagrams);
  void AnswersEmpty(const std::string& command);
  void AnswersLate(const std::string& command, const std::string& line, int delayMs);
  void AnswersFromElsewhere(const std::string& command, const std::string& line);
  void IsSilentTo(const std::string& command);
  /// Once with this, after that as the table says without it.
  void AnswersOnce(const std::string& command, const ScriptedReply& reply);

  /// Fills the table with good answers to every command of a driver.
  void LooksLikeAMount();
  /// Answers the status query. @param values what follows "$MTSTA="
  void Status(const std::string& values);

  /// What goes wrong with the exchanges from now on, beside what the table says; the next command
  /// is exchange 1. @param chooser empty: nothing. It is called on the controller's thread.
  void SetFaults(FaultChooser chooser);
  /// From now on keeps every datagram, in and out, in the order in which the wire saw them.
  void StartWireLog();
  std::vector<WireDatagram> WireLog() const;
  /// @return the time of now as the wire log tells it.
  double WireNowMs() const { return wire_.NowMs(); }

  // What came in, in the order of arrival, also what a fault then kept from being heard.
  std::vector<ReceivedDatagram> Received() const;
  std::vector<std::string> Commands() const;  ///< the texts alone
  bool Saw(const std::string& command) const { return CountOf(command) > 0; }
  int CountOf(const std::string& command) const;
  /// Forgets what came in; the table stays.
  void Clear();
  /// @return false when the command has not come (so often) by the end of the time.
  bool WaitFor(const std::string& command, int timeoutMs) const;
  bool WaitForCount(const std::string& command, int count, int timeoutMs) const;

  /// Sends a datagram without being asked. @return false when nothing has come in yet.
  bool SendToLastSender(const std::string& bytes);

 private:
  using Clock = std::chrono::steady_clock;
  struct Entry {
    std::deque<ScriptedReply> once;
    std::deque<ScriptedReply> turns;  // the last one stays
  };
  bool Listen(int patienceMs);
  void Run();
  void Take(const std::string& bytes, const platform::SocketAddress& sender);
  ScriptedReply NextReply(const std::string& command);
  int CountLocked(const std::string& command) const;

  std::string address_;    // constant after construction
  DatagramSocket socket_;  // received from by thread_ only
  DatagramSocket stranger_;
  FaultyWire wire_{socket_, stranger_};  // thread_; its faults also under lock_
  const Clock::time_point begin_ = Clock::now();
  std::atomic<bool> stopping_ = false;

  mutable std::mutex lock_;
  mutable std::condition_variable arrived_;
  // Guarded by lock_.
  std::map<std::string, Entry> table_;
  std::vector<ReceivedDatagram> received_;
  std::optional<platform::SocketAddress> lastSender_;

  mutable std::mutex wireLogLock_;
  // Guarded by wireLogLock_.
  bool keepsWireLog_ = false;
  std::vector<WireDatagram> wireLog_;

  std::thread thread_;
};

}  // namespace simulator
