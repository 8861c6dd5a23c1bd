// SPDX-License-Identifier: MIT
// Sequences of requests, faults and time, drawn at random, with the simulated mount as the model:
// whatever happens, every ticket ends once, nothing is taken for another answer, and when the
// network is well again the service says what the mount says.
#include <cstdio>
#include <future>
#include <random>

#include "gateways/mount/arrival_judge.h"
#include "simulator/fault_dice.h"
#include "tests/gateways/mount/simulated_mount.h"
#include "tests/gateways/mount/wire_rules.h"
#include "tests/support/run_length.h"

namespace {

using namespace std::chrono_literals;
using velquin::Axis;
using velquin::Connection;
using velquin::Event;
using velquin::Motion;
using velquin::Mount;
using velquin::Outcome;
using velquin::SkyPoint;
using velquin::Snapshot;
using velquin::Ticket;

class Sequence {
 public:
  explicit Sequence(uint64_t seed) : random_(seed), controller_(Options(seed)) {}

  Broken Run() {
    mount_.AddListener(events_.AsListener());
    mount_.Connect("127.0.0.1");
    if (!events_.WaitFor(Event::Kind::kConnected)) return {"no connection"};
    const int steps = Draw(4, 14);
    for (int i = 0; i < steps; ++i) Step();
    mode_ = Mode::kWell;
    if (!IsConnectedAgain()) return {"not connected again"};
    for (const Ticket& ticket : tickets_) {
      if (!ticket.WaitFor(60s)) return {"a ticket without an outcome"};
    }
    CheckEnd();
    CheckTicketsTold();
    CheckPorts(controller_.Wire(), broken_);
    CheckMoves(Pulses(), broken_);
    CheckSnapshots(events_.All(), true, broken_);
    return broken_;
  }

  int Requests() const { return static_cast<int>(tickets_.size()); }

 private:
  enum class Mode { kWell, kFaulty, kSilent };

  simulator::SimulatorOptions Options(uint64_t seed) {
    simulator::SimulatorOptions options = SimulatedController::Quick();
    options.mount.limits = {400.0, 4000.0};
    const simulator::FaultDice dice({.loss = 100'000,
                                     .duplicate = 100'000,
                                     .reorder = 50'000,
                                     .truncate = 50'000,
                                     .empty = 20'000,
                                     .foreign = 100'000,
                                     .split = 50'000,
                                     .longestDelayMs = 20,
                                     .seed = seed});
    options.faults = [this, dice](int exchange, std::string_view command) {
      if (mode_ == Mode::kWell) return simulator::Fault();
      if (mode_ == Mode::kSilent) return simulator::Fault{.silence = true};
      return dice(exchange, command);
    };
    return options;
  }
  int Draw(int least, int most) { return std::uniform_int_distribution(least, most)(random_); }
  SkyPoint Place() {
    return HighPlace(mount_.State(), Draw(-3000, 3000) / 1000.0, Draw(-100, 800) / 10.0);
  }

  void Step() {
    switch (Draw(0, 18)) {
      case 0:
      case 1:
      case 2:
        return Add(mount_.Goto(Place()));
      case 3:
        return Add(mount_.Home());
      case 4:
        return Add(mount_.Park());
      case 5:
        return Add(mount_.Unpark());
      case 6:
      case 7:
        return Add(mount_.Stop());
      case 8:
        return Add(mount_.Sync(Place()));
      case 9:
        return Add(mount_.MoveAxis(Draw(0, 1) == 0 ? Axis::kRa : Axis::kDec, Draw(-3, 3) * 15.0));
      case 10:
      case 11:
        // Lengths that no other pulse has, so that a repeated one shows.
        ++pulses_;
        return Add(mount_.Guide(
            {std::chrono::microseconds(Draw(-40, 40) * 1000 + pulses_),
             std::chrono::microseconds(Draw(-40, 40) * 1000 - 400 - pulses_)},
            Draw(0, 1) == 0 ? velquin::WhenBusy::kReplace : velquin::WhenBusy::kRefuse));
      case 12:
        rates_ = mount_.SetGuideRates({Draw(1, 100) / 100.0, Draw(1, 100) / 100.0});
        return Add(*rates_);
      case 13:
        meridian_ = mount_.SetMeridian({0.0, Draw(0, 30) * 1.0});
        return Add(*meridian_);
      case 14:
        return Add(mount_.ResetAlignment());
      case 15:
        mode_ = static_cast<Mode>(Draw(0, 1));
        return;
      case 16:
        if (Draw(0, 9) == 0) mode_ = Mode::kSilent;
        return;
      default:
        std::this_thread::sleep_for(std::chrono::milliseconds(Draw(0, 60)));  // time passes
    }
  }
  void Add(const Ticket& ticket) { tickets_.push_back(ticket); }

  bool IsConnectedAgain() {
    return Eventually([&] { return mount_.State().connection == Connection::kConnected; }, 30s);
  }

  std::vector<simulator::WireDatagram> Pulses() {
    std::vector<simulator::WireDatagram> pulses;
    for (const auto& move : controller_.Commands("$MTMV2=")) {
      // Moves by hand have rates above 1, and are meant to be renewed.
      double seconds = 0.0, ra = 0.0, dec = 0.0;
      std::sscanf(move.bytes.c_str(), "$MTMV2=%lf,%lf,%lf", &seconds, &ra, &dec);
      if (std::fabs(ra) <= 1.0 && std::fabs(dec) <= 1.0) pulses.push_back(move);
    }
    return pulses;
  }

  // The mount comes to rest by itself, and then both say the same.
  void CheckEnd() {
    int state = 0;
    SkyPoint position;
    const auto agree = [&] {
      int unused = 0;
      double number = 0.0, mjd = 0.0;
      std::sscanf(controller_.Answer("$MTSTA?").c_str(),
                  "$MTSTA=%lf,%d,%d,%d,%lf,%lf,%lf,%lf,%lf,%lf", &mjd, &state, &unused, &unused,
                  &number, &number, &number, &number, &position.raHours, &position.decDegrees);
      const Snapshot seen = mount_.State();
      const bool isSame = (seen.motion == Motion::kAtRest && state == velquin::kStateAtRest) ||
                          (seen.motion == Motion::kTracking && state == velquin::kStateTracking) ||
                          (seen.motion == Motion::kParked && state == velquin::kStateParked);
      return isSame && !seen.IsPulsing(Axis::kRa) && !seen.IsPulsing(Axis::kDec) &&
             SeparationDegrees(position, seen.position) < 0.02;
    };
    if (!Eventually(agree, 30s)) broken_.push_back("the service does not say what the mount says");
    const Snapshot seen = mount_.State();
    char text[80];
    if (rates_ && rates_->Result() == Outcome::kDone) {
      std::snprintf(text, sizeof text, "$MTAGS=%.6f,%.6f", seen.guideRates.ra, seen.guideRates.dec);
      if (controller_.Answer("$MTAGS?") != text) broken_.push_back("other guide rates");
    }
    if (meridian_ && meridian_->Result() == Outcome::kDone) {
      std::snprintf(text, sizeof text, "$MTCOM=%.6f,%.6f", seen.meridian.stopDegrees,
                    seen.meridian.gotoDegrees);
      if (controller_.Answer("$MTCOM?") != text) broken_.push_back("other meridian settings");
    }
  }

  void CheckTicketsTold() {
    const auto count = static_cast<int>(tickets_.size());
    Eventually([&] { return events_.Count(Event::Kind::kTicketKnown) >= count; }, 10s);
    CheckTickets(events_.All(), tickets_, broken_);
  }

  std::mt19937_64 random_;
  std::atomic<Mode> mode_ = Mode::kWell;
  SimulatedController controller_;
  EventLog events_;
  int pulses_ = 0;
  std::vector<Ticket> tickets_;
  std::optional<Ticket> rates_;
  std::optional<Ticket> meridian_;
  Broken broken_;
  Mount mount_{SimulatedController::MountOptionsFor(controller_.Port())};
};

TEST(MountModel, RandomSequencesBreakNoPromise) {
  const int sequences = IsFullLength() ? 10'000 : 150;
  constexpr int kAtOnce = 24;
  std::atomic<int> next = 0;
  std::atomic<int> requests = 0;
  std::mutex lock;
  std::vector<std::string> failures;
  std::vector<std::future<void>> runs;
  for (int i = 0; i < kAtOnce; ++i) {
    runs.push_back(std::async(std::launch::async, [&] {
      for (int seed = next++; seed < sequences; seed = next++) {
        Sequence sequence(static_cast<uint64_t>(seed));
        const Broken broken = sequence.Run();
        requests += sequence.Requests();
        const std::lock_guard guard(lock);
        for (const std::string& sentence : broken) {
          failures.push_back("sequence " + std::to_string(seed) + ": " + sentence);
        }
      }
    }));
  }
  for (auto& run : runs) run.wait();
  for (const std::string& failure : failures) ADD_FAILURE() << failure;
  EXPECT_GT(requests, sequences * 3);
  std::printf("[ measured ] %d sequences, %d requests\n", sequences, requests.load());
}

}  // namespace
