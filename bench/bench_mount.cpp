// SPDX-License-Identifier: MIT
// The mount service: how soon a request is on the wire, what reading a snapshot costs, how
// precisely the second half of a guide pulse comes, and what a hundred mounts cost. Exit code 1
// when a limit is not kept.
#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

#include "bench/stopwatch.h"
#include "gateways/mount/mount.h"
#include "simulator/scripted_controller.h"
#include "simulator/simulator.h"

namespace {

using namespace std::chrono_literals;
using simulator::ScriptedController;
using velquin::Connection;
using velquin::Mount;
using velquin::MountOptions;
using velquin::Ticket;

bool keepsLimits = true;

double Quantile(std::vector<double> values, double share) {
  std::sort(values.begin(), values.end());
  const auto rank = static_cast<size_t>(share * static_cast<double>(values.size()));
  return values[std::min(rank, values.size() - 1)];
}

/// Prints median and 99th percentile, and whether the latter keeps its limit.
void Report(const char* what, const std::vector<double>& ms, double limitMs) {
  const double p99 = Quantile(ms, 0.99);
  const bool holds = p99 <= limitMs;
  std::printf("%-34s median %7.3f ms, p99 %7.3f ms, limit %.0f ms%s\n", what, Quantile(ms, 0.5),
              p99, limitMs, holds ? "" : "  EXCEEDED");
  keepsLimits = keepsLimits && holds;
}

bool WaitUntilConnected(const Mount& mount) {
  const auto end = std::chrono::steady_clock::now() + 30s;
  while (mount.State().connection != Connection::kConnected) {
    if (std::chrono::steady_clock::now() > end) return false;
    std::this_thread::sleep_for(1ms);
  }
  return true;
}

/// The time of the last command with this beginning, by the controller's wire.
double ArrivalMs(const ScriptedController& controller, const char* beginning) {
  double arrival = -1.0;
  for (const auto& datagram : controller.WireLog()) {
    const bool isIt = datagram.direction == simulator::WireDirection::kIn &&
                      datagram.bytes.starts_with(beginning);
    if (isIt) arrival = datagram.timeMs;
  }
  return arrival;
}

void RequestToWire() {
  constexpr int kRequests = 1000;
  ScriptedController controller;
  controller.LooksLikeAMount();
  MountOptions options;
  options.idlePoll = 100ms;
  Mount mount(options);
  mount.Connect(controller.Address());
  if (!WaitUntilConnected(mount)) std::exit(1);
  const auto measure = [&](const char* command, auto request) {
    std::vector<double> delays;
    for (int i = 0; i < kRequests; ++i) {
      controller.StartWireLog();
      const double asked = controller.WireNowMs();
      const Ticket ticket = request();
      ticket.WaitFor(10s);
      delays.push_back(ArrivalMs(controller, command) - asked);
      // So that the requests fall anywhere between two polls.
      std::this_thread::sleep_for(std::chrono::microseconds(i * 7919 % 3000));
    }
    return delays;
  };
  Report("request to wire (guide rates)",
         measure("$MTAGS=", [&] { return mount.SetGuideRates({0.5, 0.5}); }), 5.0);
  Report("stop to wire", measure("$MTSTP=", [&] { return mount.Stop(); }), 5.0);
}

void PulseRest() {
  constexpr int kPulses = 300;
  ScriptedController controller;
  controller.LooksLikeAMount();
  controller.StartWireLog();
  Mount mount;
  mount.SetWatched(true);
  mount.Connect(controller.Address());
  if (!WaitUntilConnected(mount)) std::exit(1);
  for (int i = 0; i < kPulses; ++i) mount.Guide({20ms, 30ms}).WaitFor(10s);
  std::vector<double> late;
  double first = 0.0;
  int moves = 0;
  for (const auto& datagram : controller.WireLog()) {
    const bool isMove = datagram.direction == simulator::WireDirection::kIn &&
                        datagram.bytes.starts_with("$MTMV2=");
    if (!isMove) continue;
    if (moves++ % 2 == 1) late.push_back(datagram.timeMs - first - 20.0);
    first = datagram.timeMs;
  }
  Report("second half of a pulse, late by", late, 10.0);
}

void SnapshotRead() {
  const Mount mount;
  constexpr int kRuns = 25;
  std::vector<double> runs;
  runs.reserve(kRuns);
  uint64_t sum = 0;
  for (int i = 0; i < kRuns; ++i) {
    runs.push_back(NanosecondsPerCall(100'000, [&] { sum += mount.State().sequence; }));
  }
  const double median = Median(runs);
  const bool holds = median <= 100.0;
  std::printf("%-34s median %7.1f ns, limit 100 ns%s%s\n", "reading a snapshot", median,
              holds ? "" : "  EXCEEDED", sum == 1 ? " " : "");
  keepsLimits = keepsLimits && holds;
}

std::set<std::string> Threads() {
  std::set<std::string> threads;
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/task")) {
    threads.insert(entry.path().filename().string());
  }
  return threads;
}

/// @return seconds that these threads have run.
double RunSeconds(const std::set<std::string>& threads) {
  double ns = 0.0;
  for (const std::string& thread : threads) {
    std::ifstream file("/proc/self/task/" + thread + "/schedstat");
    double own = 0.0;
    if (file >> own) ns += own;
  }
  return ns / 1e9;
}

double ResidentKilobytes() {
  std::ifstream file("/proc/self/statm");
  double total = 0.0, resident = 0.0;
  file >> total >> resident;
  return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1024.0;
}

void HundredMounts() {
  constexpr int kMounts = 100;
  constexpr std::chrono::seconds kTime{10};
  std::vector<std::unique_ptr<simulator::Simulator>> simulators;
  for (int i = 0; i < kMounts; ++i) {
    simulator::SimulatorOptions options;
    options.port = 0;
    simulators.push_back(std::make_unique<simulator::Simulator>(options));
    if (!simulators.back()->Start()) std::exit(1);
  }
  const std::set<std::string> before = Threads();
  const double memoryBefore = ResidentKilobytes();
  std::vector<std::unique_ptr<Mount>> mounts;
  for (const auto& each : simulators) {
    MountOptions options;
    options.port = each->Port();
    mounts.push_back(std::make_unique<Mount>(options));
    mounts.back()->SetWatched(true);  // ten polls a second
    mounts.back()->Connect("127.0.0.1");
  }
  for (const auto& mount : mounts) {
    if (!WaitUntilConnected(*mount)) std::exit(1);
  }
  std::set<std::string> added;
  for (const std::string& thread : Threads()) {
    if (!before.contains(thread)) added.insert(thread);
  }
  std::vector<uint64_t> exchanges;
  exchanges.reserve(mounts.size());
  for (const auto& mount : mounts) exchanges.push_back(mount->State().link.exchanges);
  const double ranBefore = RunSeconds(added);
  std::this_thread::sleep_for(kTime);  // the time that is measured
  const double ran = RunSeconds(added) - ranBefore;
  uint64_t polls = 0, losses = 0;
  for (size_t i = 0; i < mounts.size(); ++i) {
    const velquin::LinkHealth link = mounts[i]->State().link;
    polls += link.exchanges - exchanges[i];
    losses += link.losses;
  }
  const auto seconds = static_cast<double>(kTime.count());
  std::printf(
      "%d mounts, %d simulators: %.1f polls/s each, %llu lost; %.2f %% of one processor, "
      "%.3f ms a poll; %.0f KiB and %.1f threads each\n",
      kMounts, kMounts, static_cast<double>(polls) / seconds / kMounts,
      static_cast<unsigned long long>(losses), ran / seconds * 100.0,
      ran * 1000.0 / static_cast<double>(polls), (ResidentKilobytes() - memoryBefore) / kMounts,
      static_cast<double>(added.size()) / kMounts);
}

}  // namespace

int main() {
  SnapshotRead();
  RequestToWire();
  PulseRest();
  HundredMounts();
  return keepsLimits ? 0 : 1;
}
