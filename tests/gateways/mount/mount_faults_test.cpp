// SPDX-License-Identifier: MIT
// Every kind of network fault in every operation. Each cell has a mount service and a simulated
// mount of its own; the cells of one kind run at once, since they wait most of the time.
#include <cstdio>
#include <future>
#include <set>

#include "gateways/mount/arrival_judge.h"
#include "gateways/mount/clock_plan.h"
#include "simulator/fault_dice.h"
#include "tests/gateways/mount/simulated_mount.h"
#include "tests/gateways/mount/wire_rules.h"
#include "tests/support/run_length.h"

namespace {

using namespace std::chrono_literals;
using velquin::Connection;
using velquin::Event;
using velquin::Mount;
using velquin::Outcome;
using velquin::SkyPoint;
using velquin::Ticket;

struct Kind {
  const char* name;
  simulator::FaultOptions options;
};

constexpr int kPercent = 10'000;  // in parts per million

std::vector<Kind> Kinds() {
  return {{"loss", {.loss = 25 * kPercent}},
          {"delay", {.shortestDelayMs = 20, .longestDelayMs = 300}},
          {"late", {.shortestDelayMs = 400, .longestDelayMs = 700}},
          {"duplicate", {.duplicate = 50 * kPercent}},
          {"reorder", {.reorder = 30 * kPercent}},
          {"truncate", {.truncate = 30 * kPercent}},
          {"garble", {.garble = 30 * kPercent}},
          {"empty", {.empty = 30 * kPercent}},
          {"foreign", {.foreign = 50 * kPercent}},
          {"split", {.split = 30 * kPercent}},
          {"silence", {.silenceAfter = 3}},
          {"everything",
           {.loss = 5 * kPercent,
            .duplicate = 10 * kPercent,
            .reorder = 5 * kPercent,
            .truncate = 5 * kPercent,
            .empty = 5 * kPercent,
            .foreign = 10 * kPercent,
            .split = 5 * kPercent,
            .longestDelayMs = 100}}};
}

enum class Operation {
  kConnect,
  kGoto,
  kHome,
  kPark,
  kUnpark,
  kStop,
  kSync,
  kMove,
  kGuide,
  kGuideRates,
  kSite,
  kClock,
  kReset,
  kMeridian,
};
constexpr int kOperations = 14;
constexpr std::chrono::seconds kOneSecond(1);

/// What the simulated mount itself says.
struct Truth {
  double mjd = 0.0;
  int state = 0;
  double axisAngle = 0.0;
  SkyPoint position;
};

Truth TruthOf(SimulatedController& controller) {
  Truth truth;
  int unused = 0;
  double polar = 0.0, park = 0.0;
  std::sscanf(controller.Answer("$MTSTA?").c_str(), "$MTSTA=%lf,%d,%d,%d,%lf,%lf,%lf,%lf,%lf,%lf",
              &truth.mjd, &truth.state, &unused, &unused, &polar, &truth.axisAngle, &park, &park,
              &truth.position.raHours, &truth.position.decDegrees);
  return truth;
}

class Cell {
 public:
  Cell(const Kind& kind, Operation operation, uint64_t seed)
      : kind_(kind), operation_(operation), controller_(Options(kind, seed)) {}

  Broken Run() {
    mount_.AddListener(events_.AsListener());
    const bool connects = operation_ == Operation::kConnect;
    faulty_ = connects;
    mount_.Connect("127.0.0.1");
    if (connects) return Connects();
    if (!events_.WaitFor(Event::Kind::kConnected)) return {"no connection"};
    if (!Prepare()) return {"not prepared"};
    faulty_ = true;
    Begin();
    std::vector<Outcome> outcomes;
    for (const Ticket& ticket : tickets_) {
      const auto outcome = ticket.WaitFor(100s);
      if (!outcome) return {"a ticket without an outcome"};
      outcomes.push_back(*outcome);
    }
    for (size_t i = 0; i < outcomes.size(); ++i) CheckOutcome(outcomes[i], i);
    CheckCounts();
    faulty_ = false;
    const bool isBack =
        Eventually([&] { return mount_.State().connection == Connection::kConnected; }, 30s);
    if (!isBack) broken_.push_back("the link did not come back");
    Eventually([&] { return events_.Count(Event::Kind::kTicketKnown) >= Told(); }, 10s);
    CheckTickets(events_.All(), tickets_, broken_);
    CheckPorts(controller_.Wire(), broken_);
    CheckSnapshots(events_.All(), !IsGarbled() && operation_ != Operation::kClock, broken_);
    return broken_;
  }

 private:
  simulator::SimulatorOptions Options(const Kind& kind, uint64_t seed) {
    simulator::SimulatorOptions options = SimulatedController::Quick();
    options.mount.utcSeconds += 50.0;  // a full minute comes within the cell's time
    simulator::FaultOptions faults = kind.options;
    faults.seed = seed;
    options.faults = [this, dice = simulator::FaultDice(faults), first = 0](
                         int exchange, std::string_view command) mutable {
      if (!faulty_) {
        first = exchange;
        return simulator::Fault();
      }
      return dice(exchange - first, command);
    };
    return options;
  }
  bool IsGarbled() const { return std::string_view(kind_.name) == "garble"; }
  int Told() const { return static_cast<int>(tickets_.size() + preparations_); }
  bool IsDone(const Ticket& ticket) {
    ++preparations_;
    return ticket.WaitFor(30s) == Outcome::kDone;
  }
  SkyPoint High(double hoursEast) const { return HighPlace(mount_.State(), hoursEast); }

  bool Prepare() {
    if (!IsDone(mount_.Goto(High(1.0)))) return false;
    if (operation_ == Operation::kUnpark && !IsDone(mount_.Park())) return false;
    target_ = High(2.0);
    ahead_ = std::chrono::nanoseconds(
        std::llround((mount_.State().controllerMjd -
                      velquin::MjdOf(std::chrono::system_clock::now() - mount_.State().Age())) *
                     86400.0 * 1e9));
    return true;
  }

  void Begin() {
    switch (operation_) {
      case Operation::kConnect:
        break;
      case Operation::kGoto:
        // The first is overtaken, by whatever way.
        tickets_.push_back(mount_.Goto(High(-1.0)));
        tickets_.push_back(mount_.Goto(target_));
        break;
      case Operation::kHome:
        tickets_.push_back(mount_.Home());
        break;
      case Operation::kPark:
        tickets_.push_back(mount_.Park());
        break;
      case Operation::kUnpark:
        tickets_.push_back(mount_.Unpark());
        break;
      case Operation::kStop: {
        tickets_.push_back(mount_.Goto(target_));
        Eventually([&] { return controller_.Commands("$MTTGT=3,").size() > 1; }, kOneSecond);
        const auto asked = std::chrono::steady_clock::now();
        const size_t before = controller_.Commands("$MTSTP=1").size();
        tickets_.push_back(mount_.Stop());
        Eventually([&] { return controller_.Commands("$MTSTP=1").size() > before; }, 5s);
        stopTook_ = std::chrono::steady_clock::now() - asked;
        break;
      }
      case Operation::kSync:
        tickets_.push_back(mount_.Sync({target_.raHours, 39.0}));
        break;
      case Operation::kMove:
        tickets_.push_back(mount_.MoveAxis(velquin::Axis::kDec, 20.0));
        tickets_.push_back(mount_.MoveAxis(velquin::Axis::kRa, -30.0));
        tickets_.push_back(mount_.MoveAxis(velquin::Axis::kDec, 0.0));
        tickets_.push_back(mount_.MoveAxis(velquin::Axis::kRa, 0.0));
        break;
      case Operation::kGuide:
        tickets_.push_back(mount_.Guide({150'001us, -330'002us}));
        break;
      case Operation::kGuideRates:
        tickets_.push_back(mount_.SetGuideRates({0.25, 0.75}));
        break;
      case Operation::kSite:
        tickets_.push_back(mount_.SetSite({-33.9, 151.2, 10}));
        break;
      case Operation::kClock:
        ahead_ += 300ms;
        tickets_.push_back(mount_.SetClock(ahead_));
        break;
      case Operation::kReset:
        tickets_.push_back(mount_.ResetAlignment());
        break;
      case Operation::kMeridian:
        tickets_.push_back(mount_.SetMeridian({2.0, 7.0}));
        break;
    }
  }

  Broken Connects() {
    const bool ended = Eventually(
        [&] {
          return events_.Count(Event::Kind::kConnected) +
                 events_.Count(Event::Kind::kConnectFailed);
        },
        60s);
    if (!ended) broken_.push_back("connecting did not end");
    const velquin::Snapshot state = mount_.State();
    const bool isConnected = events_.Count(Event::Kind::kConnected) == 1;
    const bool hasFailed = events_.Count(Event::Kind::kConnectFailed) == 1;
    if (isConnected == hasFailed) broken_.push_back("connecting ended more than once");
    if (hasFailed && state.failure == velquin::ConnectFailure::kNone) {
      broken_.push_back("no reason");
    }
    CheckPorts(controller_.Wire(), broken_);
    return broken_;
  }

  void CheckOutcome(Outcome outcome, size_t ticket) {
    const bool isLast = ticket + 1 == tickets_.size();
    if (outcome == Outcome::kDone && isLast) return CheckEffect();
    std::set<Outcome> allowed = {Outcome::kNoAnswer, Outcome::kLinkLost, Outcome::kDone};
    if (!isLast) allowed.insert({Outcome::kOvertaken, Outcome::kCancelledByStop});
    // Garbled numbers may say anything.
    if (IsGarbled()) {
      allowed.insert({Outcome::kParked, Outcome::kMoving, Outcome::kStoppedElsewhere});
    }
    // A status that was lost in the middle of a slew; seen at rest later. Nothing else.
    if (!allowed.contains(outcome)) broken_.push_back(std::string("outcome: ") + Text(outcome));
  }

  // What is told as done has been done.
  void CheckEffect() {
    const Truth truth = TruthOf(controller_);
    const auto isAt = [&](const SkyPoint& place) {
      return SeparationDegrees(truth.position, place) < 0.05;
    };
    const auto says = [&](const char* query, const char* answer) {
      const std::string said = controller_.Answer(query);
      if (said != answer) broken_.push_back("done, but " + said);
    };
    bool holds = true;
    switch (operation_) {
      case Operation::kGoto:
        holds = truth.state == velquin::kStateTracking && isAt(target_);
        break;
      case Operation::kHome:
        holds = truth.state == velquin::kStateAtRest && std::fabs(truth.axisAngle - 90.0) < 0.05;
        break;
      case Operation::kPark:
        holds = truth.state == velquin::kStateParked;
        break;
      case Operation::kUnpark:
        holds = truth.state == velquin::kStateTracking;
        break;
      case Operation::kStop:
        holds =
            Eventually([&] { return TruthOf(controller_).state == velquin::kStateTracking; }, 10s);
        break;
      case Operation::kSync:
        holds = isAt({target_.raHours, 39.0});
        break;
      case Operation::kClock: {
        const double right = velquin::MjdOf(std::chrono::system_clock::now() + ahead_);
        holds = std::fabs(truth.mjd - right) * 86400.0 < 0.4;
        break;
      }
      case Operation::kGuideRates:
        says("$MTAGS?", "$MTAGS=0.250000,0.750000");
        break;
      case Operation::kSite:
        says("$SYLOC?", "$SYLOC=151.200,-33.900,10");
        break;
      case Operation::kMeridian:
        says("$MTCOM?", "$MTCOM=2.000000,7.000000");
        break;
      case Operation::kGuide: {
        const auto moves = controller_.Commands("$MTMV2=");
        holds = moves.size() == 2 && moves[0].bytes == "$MTMV2=0.150001,1.000000,-1.000000" &&
                moves[1].bytes == "$MTMV2=0.180001,0.000000,-1.000000";
        break;
      }
      case Operation::kMove:
      case Operation::kReset:
      case Operation::kConnect:
        break;
    }
    if (!holds) broken_.push_back("told as done, but it is not so");
  }

  // Nothing is sent more often than it may be.
  void CheckCounts() {
    const int handOvers = 1 + events_.Count(Event::Kind::kLinkBack);
    const auto most = [&](const char* command, int count) {
      const auto sent = static_cast<int>(controller_.Commands(command).size());
      if (sent > count) {
        broken_.push_back(std::string(command) + " was sent " + std::to_string(sent) + " times");
      }
    };
    if (operation_ == Operation::kGuide) CheckMoves(controller_.Commands("$MTMV2="), broken_);
    most("$ALIGN=", 2);
    most("$SYLOC=", 2);
    most("$ALINI=", 2);
    most("$MTINI=", 0);  // no clock was a minute off
    most("$MTAGS=", 2 * handOvers);
    most("$MTCOM=", 2 * handOvers);
    most("$MTTGT=", 6);
    double last = -60'000.0;
    for (const auto& clock : controller_.Commands("$SYLTM=")) {
      if (clock.timeMs - last < 59'000.0) broken_.push_back("the clock was set twice in a minute");
      last = clock.timeMs;
    }
    // One exchange of half a second at most goes before a stop; the rest is this busy machine.
    if (stopTook_ > kOneSecond) broken_.push_back("a stop came late");
  }

  const Kind kind_;
  const Operation operation_;
  std::atomic<bool> faulty_ = false;
  SimulatedController controller_;
  EventLog events_;
  SkyPoint target_;
  std::chrono::nanoseconds ahead_{0};
  std::chrono::steady_clock::duration stopTook_{0};
  size_t preparations_ = 0;
  std::vector<Ticket> tickets_;
  Broken broken_;
  Mount mount_{SimulatedController::MountOptionsFor(controller_.Port())};
};

class MountFaults : public testing::TestWithParam<Kind> {};

TEST_P(MountFaults, BreakNoPromise) {
  const uint64_t seeds = IsFullLength() ? 5 : 1;
  for (uint64_t seed = 1; seed <= seeds; ++seed) {
    std::vector<std::future<Broken>> cells;
    for (int operation = 0; operation < kOperations; ++operation) {
      cells.push_back(std::async(std::launch::async, [&, operation] {
        return Cell(GetParam(), static_cast<Operation>(operation), seed).Run();
      }));
    }
    for (int operation = 0; operation < kOperations; ++operation) {
      for (const std::string& sentence : cells[static_cast<size_t>(operation)].get()) {
        ADD_FAILURE() << GetParam().name << ", operation " << operation << ", seed " << seed << ": "
                      << sentence;
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Of, MountFaults, testing::ValuesIn(Kinds()),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
