// SPDX-License-Identifier: MIT
// A simulated mount for runs of a million commands: it keeps no record of what was said, and it can
// be told to fail now and then.
#pragma once

#include <atomic>
#include <cstdint>
#include <string_view>
#include <thread>

#include "simulator/datagram_socket.h"
#include "simulator/simulator.h"

class SteadyController {
 public:
  enum class Failure { kSilence, kWrongKey };

  /// Begins to answer on 127.0.0.1. Throws std::runtime_error when others keep the port.
  /// @param stopwatch time of the simulated mount; empty for this machine's own
  explicit SteadyController(simulator::Simulator::Stopwatch stopwatch = {});
  ~SteadyController();
  SteadyController(const SteadyController&) = delete;
  SteadyController& operator=(const SteadyController&) = delete;

  static const char* Address() { return "127.0.0.1"; }

  /// From now on every nth status query fails. @param every 0 for none. Any thread.
  void FailPolls(Failure how, int64_t every);

  // Counted since construction. Any thread.
  int64_t Exchanges() const { return exchanges_; }
  int64_t Polls() const { return polls_; }
  int64_t FailedPolls() const { return failedPolls_; }
  /// @return how often a datagram came from another port than the one before it.
  int64_t ChangesOfPort() const { return changesOfPort_; }

 private:
  void Run();
  void Take(std::string_view line, const platform::SocketAddress& sender);
  bool IsToFail();
  void Reply(std::string_view line, const platform::SocketAddress& to);

  simulator::Simulator mount_;
  simulator::DatagramSocket socket_;  // thread_ only, once it runs
  uint16_t lastPort_ = 0;             // thread_ only
  std::atomic<Failure> failure_ = Failure::kSilence;
  std::atomic<int64_t> failEvery_ = 0;
  std::atomic<int64_t> exchanges_ = 0;
  std::atomic<int64_t> polls_ = 0;
  std::atomic<int64_t> failedPolls_ = 0;
  std::atomic<int64_t> changesOfPort_ = 0;
  std::atomic<bool> stopping_ = false;
  std::thread thread_;
};
