// SPDX-License-Identifier: MIT
// A mount service and a simulated mount that moves, whose network is as bad as a test wishes.
#pragma once

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cmath>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "gateways/mount/mount.h"
#include "simulator/simulator.h"
#include "tests/gateways/mount/event_log.h"
#include "tests/gateways/mount/high_place.h"
#include "tests/support/eventually.h"

/// A simulator on a port of its own, with what it reported and what its wire saw.
class SimulatedController {
 public:
  explicit SimulatedController(simulator::SimulatorOptions options = Quick()) {
    options.port = 0;
    const simulator::FaultChooser faults = options.faults;
    options.faults = [this, faults](int exchange, std::string_view command) {
      simulator::Fault fault = faults ? faults(exchange, command) : simulator::Fault();
      if (silent_) fault.silence = true;
      return fault;
    };
    options.recorder = [this](const simulator::WireDatagram& datagram) {
      const std::lock_guard guard(lock_);
      wire_.push_back(datagram);
    };
    simulator_ = std::make_unique<simulator::Simulator>(options, [this](const std::string& line) {
      const std::lock_guard guard(lock_);
      reports_.push_back(line);
    });
    EXPECT_TRUE(simulator_->Start());
  }
  ~SimulatedController() { simulator_->Stop(); }
  SimulatedController(const SimulatedController&) = delete;
  SimulatedController& operator=(const SimulatedController&) = delete;

  /// A mount that is anywhere within a second or two; its clock runs as the real one.
  static simulator::SimulatorOptions Quick() {
    simulator::SimulatorOptions options;
    options.mount.limits = {90.0, 400.0};
    options.mount.utcSeconds = 60000.0 * 86400.0;
    return options;
  }
  static velquin::MountOptions MountOptionsFor(uint16_t port) {
    velquin::MountOptions options;
    options.port = port;
    options.activePoll = std::chrono::milliseconds(20);
    options.idlePoll = std::chrono::milliseconds(50);
    return options;
  }

  uint16_t Port() const { return simulator_->Port(); }
  /// From now on it is gone, or back.
  void SetSilent(bool silent) { silent_ = silent; }
  /// Something else than the service talks to it.
  std::string Answer(const std::string& line) { return simulator_->Answer(line); }
  std::vector<simulator::WireDatagram> Wire() const {
    const std::lock_guard guard(lock_);
    return wire_;
  }
  std::vector<std::string> Reports() const {
    const std::lock_guard guard(lock_);
    return reports_;
  }
  /// The commands that came with this beginning, without line end, lost ones included.
  std::vector<simulator::WireDatagram> Commands(const std::string& beginning) const {
    std::vector<simulator::WireDatagram> found;
    for (simulator::WireDatagram& datagram : Wire()) {
      if (datagram.direction != simulator::WireDirection::kIn) continue;
      if (!datagram.bytes.starts_with(beginning)) continue;
      datagram.bytes.resize(datagram.bytes.find_last_not_of("\r\n") + 1);
      found.push_back(datagram);
    }
    return found;
  }

 private:
  std::atomic<bool> silent_ = false;
  mutable std::mutex lock_;
  // Guarded by lock_.
  std::vector<simulator::WireDatagram> wire_;
  std::vector<std::string> reports_;

  std::unique_ptr<simulator::Simulator> simulator_;
};

class SimulatedMount : public testing::Test {
 protected:
  static constexpr std::chrono::seconds kSoon{30};  // a deadline, not a wait

  void Begin(const simulator::SimulatorOptions& options = SimulatedController::Quick()) {
    controller = std::make_unique<SimulatedController>(options);
    mount =
        std::make_unique<velquin::Mount>(SimulatedController::MountOptionsFor(controller->Port()));
    mount->AddListener(events.AsListener());
    mount->Connect("127.0.0.1");
    ASSERT_TRUE(events.WaitFor(velquin::Event::Kind::kConnected));
  }
  static velquin::Outcome Of(const velquin::Ticket& ticket) {
    const auto outcome = ticket.WaitFor(kSoon);
    EXPECT_TRUE(outcome.has_value());
    return outcome.value_or(velquin::Outcome::kNoAnswer);
  }
  /// @return a position that is above the horizon, so far east of the meridian.
  velquin::SkyPoint High(double hoursEast = 1.0, double decDegrees = 40.0) const {
    return HighPlace(mount->State(), hoursEast, decDegrees);
  }
  bool ShowsMotion(velquin::Motion motion) {
    return Eventually([&] { return mount->State().motion == motion; }, kSoon);
  }

  EventLog events;
  std::unique_ptr<SimulatedController> controller;
  std::unique_ptr<velquin::Mount> mount;
};
