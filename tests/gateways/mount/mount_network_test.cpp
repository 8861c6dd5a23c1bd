// SPDX-License-Identifier: MIT
// A real network: two of the kernel's, joined by a cable, that drop packets, lose the cable and
// change addresses. in_two_networks.sh makes them.
#include <gmock/gmock.h>

#include <cstdlib>
#include <string>

#include "gateways/mount/mount.h"
#include "tests/gateways/mount/event_log.h"
#include "tests/gateways/mount/high_place.h"
#include "tests/gateways/mount/wire_rules.h"
#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;
using velquin::Connection;
using velquin::Event;
using velquin::Mount;
using velquin::MountOptions;
using velquin::Outcome;
using velquin::SkyPoint;
using velquin::Ticket;

std::string Environment(const char* name) {
  const char* value = std::getenv(name);
  return value == nullptr ? "" : value;
}

class MountNetwork : public testing::Test {
 protected:
  static constexpr std::chrono::seconds kSoon{60};

  MountNetwork() : mount(std::make_unique<Mount>(Options())) {
    mount->AddListener(events.AsListener());
  }
  static MountOptions Options() {
    MountOptions options;
    options.activePoll = 20ms;
    options.idlePoll = 50ms;
    return options;
  }
  void SetUp() override { ASSERT_TRUE(Connect()); }
  /// Three attempts of three exchanges: on this network one fails now and then.
  bool Connect() {
    for (int i = 0; i < 3; ++i) {
      const int failed = events.Count(Event::Kind::kConnectFailed);
      mount->Connect(Environment("MOUNT_ADDRESS"));
      Eventually(
          [&] {
            return events.Count(Event::Kind::kConnected) > 0 ||
                   events.Count(Event::Kind::kConnectFailed) > failed;
          },
          kSoon);
      if (events.Count(Event::Kind::kConnected) > 0) return true;
    }
    return false;
  }
  bool ShowsConnection(Connection connection) {
    return Eventually([&] { return mount->State().connection == connection; }, kSoon);
  }
  static void Ip(const std::string& arguments) {
    ASSERT_EQ(std::system(("ip " + arguments).c_str()), 0) << arguments;
  }
  SkyPoint High(double hoursEast) const { return HighPlace(mount->State(), hoursEast); }
  Outcome Of(const Ticket& ticket) {
    tickets.push_back(ticket);
    const auto outcome = ticket.WaitFor(kSoon);
    EXPECT_TRUE(outcome.has_value());
    return outcome.value_or(Outcome::kRefused);
  }

  EventLog events;
  std::vector<Ticket> tickets;
  std::unique_ptr<Mount> mount;
  const std::string cable = Environment("CABLE");
};

TEST_F(MountNetwork, DrivesTheMountThroughPacketLoss) {
  int done = 0;
  const auto drive = [&](const Ticket& ticket) {
    const Outcome outcome = Of(ticket);
    // Nothing else can come of a network that loses packets.
    EXPECT_TRUE(outcome == Outcome::kDone || outcome == Outcome::kNoAnswer ||
                outcome == Outcome::kLinkLost)
        << Text(outcome);
    done += outcome == Outcome::kDone ? 1 : 0;
    ShowsConnection(Connection::kConnected);
  };
  constexpr int kRounds = 5;
  for (int i = 0; i < kRounds; ++i) {
    drive(mount->Goto(High(1.0 + 0.2 * i)));
    for (int pulse = 0; pulse < 6; ++pulse) drive(mount->Guide({30ms, 50ms}));
    drive(mount->SetGuideRates({0.5, 0.5}));
    drive(mount->Park());
    drive(mount->Unpark());
    drive(mount->Stop());
  }
  // A pulse is two commands that are never repeated: one in five is lost.
  EXPECT_GT(done, kRounds * 11 * 6 / 10);
  const velquin::LinkHealth link = mount->State().link;
  EXPECT_GT(link.losses, 0u);
  EXPECT_GT(link.roundTripMedianMs, 1.0);
  EXPECT_TRUE(Eventually(
      [&] { return events.Count(Event::Kind::kTicketKnown) >= static_cast<int>(tickets.size()); },
      kSoon));
  Broken broken;
  CheckTickets(events.All(), tickets, broken);
  CheckSnapshots(events.All(), true, broken);
  EXPECT_THAT(broken, testing::IsEmpty());
  std::printf(
      "[ measured ] %llu exchanges, %llu lost, round trip %.1f ms, p99 %.1f ms, %d of %zu "
      "requests done, link lost %d times\n",
      static_cast<unsigned long long>(link.exchanges), static_cast<unsigned long long>(link.losses),
      link.roundTripMedianMs, link.roundTripP99Ms, done, tickets.size(),
      events.Count(Event::Kind::kLinkLost));
}

TEST_F(MountNetwork, RecoversWhenTheCableIsPutBack) {
  ASSERT_EQ(Of(mount->Goto(High(1.0))), Outcome::kDone);
  Ip("link set " + cable + " down");
  ASSERT_TRUE(ShowsConnection(Connection::kLost));
  EXPECT_EQ(Of(mount->Stop()), Outcome::kLinkLost);
  Ip("link set " + cable + " up");
  ASSERT_TRUE(ShowsConnection(Connection::kConnected));
  ASSERT_TRUE(events.WaitFor(Event::Kind::kLinkBack));
  EXPECT_TRUE(events.Of(Event::Kind::kLinkBack).back().samePlace);
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
}

TEST_F(MountNetwork, GoesOnAfterItsOwnAddressHasChanged) {
  Ip("addr del 10.77.0.1/24 dev " + cable);
  Ip("addr add 10.77.0.3/24 dev " + cable);
  const bool goesOn = Eventually(
      [&] {
        ShowsConnection(Connection::kConnected);
        return Of(mount->Goto(High(1.2))) == Outcome::kDone;
      },
      kSoon);
  EXPECT_TRUE(goesOn);
  EXPECT_LT(mount->State().Age(), 2s);
  Ip("addr del 10.77.0.3/24 dev " + cable);
  Ip("addr add 10.77.0.1/24 dev " + cable);
}

}  // namespace
