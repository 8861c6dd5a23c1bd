// SPDX-License-Identifier: MIT
#include "tests/library/endurance/steady_controller.h"

#include <chrono>
#include <stdexcept>
#include <string>
#include <utility>

#include "tests/support/eventually.h"

namespace {

constexpr uint16_t kPort = 60023;
constexpr int kStopCheckMs = 20;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kPoll = "$MTSTA?";

}  // namespace

SteadyController::SteadyController(simulator::Simulator::Stopwatch stopwatch)
    : mount_(simulator::SimulatorOptions(), {}, std::move(stopwatch)) {
  // Another test program may still be giving it back.
  if (!Eventually([this] { return socket_.Open(Address(), kPort); }, std::chrono::minutes(1))) {
    throw std::runtime_error("the controller's port is in use");
  }
  thread_ = std::thread([this] { Run(); });
}

SteadyController::~SteadyController() {
  stopping_ = true;
  thread_.join();
}

void SteadyController::FailPolls(Failure how, int64_t every) {
  failure_ = how;
  failEvery_ = every;
}

void SteadyController::Run() {
  std::string datagram;
  platform::SocketAddress sender = {};
  while (!stopping_) {
    if (!socket_.Wait(kStopCheckMs) || !socket_.Receive(datagram, sender)) continue;
    const std::string_view line(datagram);
    if (line.ends_with(kLineEnd)) Take(line.substr(0, line.size() - kLineEnd.size()), sender);
  }
}

void SteadyController::Take(std::string_view line, const platform::SocketAddress& sender) {
  const uint16_t port = platform::PortOf(sender);
  if (lastPort_ != 0 && port != lastPort_) ++changesOfPort_;
  lastPort_ = port;
  ++exchanges_;
  polls_ += line == kPoll ? 1 : 0;
  if (line == kPoll && IsToFail()) {
    ++failedPolls_;
    if (failure_ == Failure::kWrongKey) Reply("$SYVER=1.00", sender);
  } else if (line == "$SYUTM?") {
    // Always the same, so that the texts which the library keeps stay as long as they are.
    Reply("$SYUTM=2026,11,21,12,30,30", sender);
  } else {
    Reply(mount_.Answer(line), sender);
  }
}

bool SteadyController::IsToFail() {
  const int64_t every = failEvery_;
  return every > 0 && polls_ % every == 0;
}

void SteadyController::Reply(std::string_view line, const platform::SocketAddress& to) {
  socket_.Send(std::string(line).append(kLineEnd), to);
}
