// SPDX-License-Identifier: MIT
// Finding an address for the simulated mount, and listening to what is said to it.
#include "tests/console/mount_fixture.h"

#include <algorithm>
#include <chrono>
#include <random>
#include <sstream>
#include <stdexcept>

#include "simulator/scripted_controller.h"
#include "tests/support/eventually.h"

namespace {

constexpr double kWinterEveningMjd = 61055.5;  // 2026-01-15 12:00 UTC
constexpr int kSlewing = 2;

constexpr auto kPatience = std::chrono::seconds(60);

/// @return an address that test programs running at the same time hardly choose; the only one where
///         a socket takes its port on all of them.
std::string LoopbackAddress() {
  static std::random_device random;
  if (!simulator::ScriptedController::CanStandBesideOthers()) return "127.0.0.1";
  return "127." + std::to_string(16 + random() % 200) + '.' + std::to_string(random() % 256) + '.' +
         std::to_string(1 + random() % 254);
}

}  // namespace

SimulatedMount::SimulatedMount(double topRate) {
  simulator::SimulatorOptions options;
  options.mount.utcSeconds = kWinterEveningMjd * 86400.0;
  options.mount.limits = {topRate, 2 * topRate};
  const bool listens = Eventually(
      [&] {
        options.address = LoopbackAddress();
        simulator_ = std::make_unique<simulator::Simulator>(
            options, [this](const std::string& line) { Remember(line); });
        return simulator_->Start();
      },
      kPatience);
  if (!listens) throw std::runtime_error("no free loopback address for the simulated mount");
  address_ = options.address;
}

void SimulatedMount::Remember(const std::string& reportLine) {
  // TIME COMMAND -> ANSWER
  const size_t begin = reportLine.find('$');
  const size_t end = reportLine.find(" -> ");
  if (begin == std::string::npos || end == std::string::npos) {
    ADD_FAILURE() << "a line of the simulator without a command: " << reportLine;
    return;
  }
  const std::string command = reportLine.substr(begin, end - begin);
  if (command == "$MTSTA?") return;
  const std::lock_guard guard(lock_);
  commands_.push_back(command);
}

std::vector<double> SimulatedMount::Status() {
  std::istringstream values(Say("$MTSTA?").substr(std::string("$MTSTA=").size()));
  std::vector<double> fields;
  for (std::string field; std::getline(values, field, ',');) fields.push_back(std::stod(field));
  return fields;
}

std::vector<std::string> SimulatedMount::Commands() const {
  const std::lock_guard guard(lock_);
  return commands_;
}

bool SimulatedMount::Saw(const std::string& command) const {
  const auto commands = Commands();
  return std::find(commands.begin(), commands.end(), command) != commands.end();
}

void SimulatedMount::PointAt(double raHours, double decDegrees) {
  Say("$MTTGT=3," + std::to_string(raHours) + ',' + std::to_string(decDegrees) + ',');
  if (!Eventually([this] { return State() != kSlewing; }, std::chrono::seconds(20)))
    throw std::runtime_error("the simulated mount does not arrive");
}
