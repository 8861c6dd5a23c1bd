// SPDX-License-Identifier: MIT
// The whole simulated controller: a mount, its command language, the network, and the clock that
// drives them. Started and stopped by its owner's thread; Answer may be called from any thread.
#pragma once

#include <functional>
#include <mutex>
#include <string>
#include <string_view>

#include "simulator/command_interpreter.h"
#include "simulator/mount_model.h"
#include "simulator/udp_server.h"

namespace simulator {

struct SimulatorOptions {
  std::string address = "127.0.0.1";  ///< an IPv4 address of this machine
  uint16_t port = 60023;              ///< 0 lets the system choose
  /// How many seconds pass for mount and controller, its clock included, in one second.
  double timeScale = 1.0;
  MountSettings mount;
  FaultChooser faults;            ///< what goes wrong on the network; empty: nothing
  FaultyWire::Recorder recorder;  ///< told of every datagram, on the answering thread; may be empty
};

class Simulator {
 public:
  /// Told of every command that was answered, one line of printable text. Called under the
  /// simulator's lock by the answering thread; must not call back.
  using Reporter = std::function<void(const std::string& line)>;
  /// Gives seconds that only grow.
  using Stopwatch = std::function<double()>;

  /// @param reporter may be empty
  /// @param stopwatch empty for this machine's own; tests bring theirs
  explicit Simulator(const SimulatorOptions& options, Reporter reporter = {},
                     Stopwatch stopwatch = {});

  /// Begins to answer on the network. @return false when the address cannot be had.
  bool Start() { return server_.Start(options_.address, options_.port); }
  void Stop() { server_.Stop(); }
  /// @return the port it answers on; 0 when stopped.
  uint16_t Port() const { return server_.Port(); }

  /// Answers one command line as the network would be answered, both without line end.
  std::string Answer(std::string_view line);

 private:
  void Report(std::string_view line, const CommandOutcome& outcome) const;

  const SimulatorOptions options_;
  const Reporter reporter_;
  const Stopwatch stopwatch_;

  std::mutex lock_;
  // Guarded by lock_. The model has no thread: it is brought up to date before each command.
  MountModel model_;
  CommandInterpreter interpreter_;
  double lastSeconds_;

  UdpServer server_;  // last, so that its thread ends before what it uses
};

}  // namespace simulator
