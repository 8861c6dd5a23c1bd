// SPDX-License-Identifier: MIT
#include "tests/library/faults/machine_delay.h"

#include <algorithm>
#include <chrono>
#include <string>

#include "platform/threads.h"
#include "simulator/datagram_socket.h"

namespace {

constexpr int kSleepMs = 3;
constexpr int kNeverMs = 10'000;

double NowMs() {
  const auto since = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double, std::milli>(since).count();
}

}  // namespace

MachineDelay::MachineDelay() : roundBeganMs_(NowMs()) {
  thread_ = std::thread([this] { Watch(); });
}

MachineDelay::~MachineDelay() {
  stopping_ = true;
  thread_.join();
}

double MachineDelay::LongestMs() const {
  return std::max(longestMs_.load(), NowMs() - roundBeganMs_ - kSleepMs);
}

void MachineDelay::Watch() {
  simulator::DatagramSocket socket;
  socket.Open("127.0.0.1", 0);
  const auto self = platform::MakeAddress(platform::AddressFromText("127.0.0.1"), socket.Port());
  std::string bytes;
  platform::SocketAddress sender = {};
  while (!stopping_) {
    platform::SleepMs(kSleepMs);
    socket.Send("?", self);
    if (socket.Wait(kNeverMs)) socket.Receive(bytes, sender);
    const double endMs = NowMs();
    longestMs_ = std::max<double>(longestMs_, endMs - roundBeganMs_ - kSleepMs);
    roundBeganMs_ = endMs;
  }
}
