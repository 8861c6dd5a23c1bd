// SPDX-License-Identifier: MIT
// A simulated mount on an address of its own, for velquinctl to drive.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <mutex>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "simulator/simulator.h"
#include "tests/console/velquinctl_run.h"

/// The mount stands in Tokyo on a winter evening: Orion and Taurus are high up. It slews far faster
/// than a real one, because tests wait for it.
class SimulatedMount {
 public:
  /// Waits for an address when all are in use. @param topRate degrees per second
  explicit SimulatedMount(double topRate = 200.0);
  SimulatedMount(const SimulatedMount&) = delete;
  SimulatedMount& operator=(const SimulatedMount&) = delete;

  const std::string& Address() const { return address_; }
  /// Says a command to the controller as a host would. @return its answer.
  std::string Say(const std::string& command) { return simulator_->Answer(command); }
  /// The fields of its status: 1 state, 8 right ascension in hours, 9 declination in degrees.
  std::vector<double> Status();
  double RaDegrees() { return Status()[8] * 15.0; }
  double DecDegrees() { return Status()[9]; }
  int State() { return static_cast<int>(Status()[1]); }

  /// @return the commands that came from the network or were said, without status queries.
  std::vector<std::string> Commands() const;
  bool Saw(const std::string& command) const;
  /// Brings it to a place above the horizon, tracking.
  void PointAt(double raHours, double decDegrees);

 private:
  void Remember(const std::string& reportLine);

  std::string address_;
  mutable std::mutex lock_;
  std::vector<std::string> commands_;  // guarded by lock_
  std::unique_ptr<simulator::Simulator> simulator_;
};

/// Tests of velquinctl with one mount.
class VelquinctlTest : public testing::Test {
 protected:
  const std::string& Address() const { return mount.Address(); }
  static nlohmann::json Json(const ProgramResult& result) {
    return nlohmann::json::parse(result.out);
  }

  SimulatedMount mount;
};
