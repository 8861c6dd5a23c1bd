// SPDX-License-Identifier: MIT
// Handing the site and the clock over.
#include <cmath>

#include "gateways/mount/clock_plan.h"
#include "tests/gateways/mount/simulated_mount.h"

namespace {

using namespace std::chrono_literals;
using velquin::Motion;
using velquin::Outcome;
using velquin::Ticket;

class MountHandOver : public SimulatedMount {
 protected:
  // The mount's clock shows a time shortly before a full minute.
  static simulator::SimulatorOptions BeforeTheMinute() {
    simulator::SimulatorOptions options = SimulatedController::Quick();
    options.mount.utcSeconds = 60000.0 * 86400.0 + 57.0;
    return options;
  }
  void SetUp() override { Begin(BeforeTheMinute()); }

  /// @return how far the mount's clock is ahead of this machine's.
  std::chrono::nanoseconds Ahead() const {
    const velquin::Snapshot state = mount->State();
    const auto then = std::chrono::system_clock::now() - state.Age();
    const double days = state.controllerMjd - velquin::MjdOf(then);
    return std::chrono::nanoseconds(std::llround(days * 86400.0 * 1e9));
  }
  /// @return seconds that the mount's clock is ahead of the right time.
  double Error(std::chrono::nanoseconds ahead) const {
    return std::chrono::duration<double>(Ahead() - ahead).count();
  }
};

TEST_F(MountHandOver, TheSiteIsHandedOverAndReadBack) {
  EXPECT_EQ(Of(mount->SetSite({-33.9, 151.2, 10})), Outcome::kDone);
  EXPECT_EQ(controller->Commands("$SYLOC=").at(0).bytes, "$SYLOC= 151.200,-33.900,10");
  EXPECT_EQ(mount->State().site.latitudeDegrees, -33.9);
  EXPECT_EQ(mount->State().site.zoneHours, 10);
  EXPECT_EQ(mount->State().motion, Motion::kAtRest);  // it is sent nowhere
}

TEST_F(MountHandOver, TheSiteWaitsForAMountThatMoves) {
  ASSERT_EQ(Of(mount->MoveAxis(velquin::Axis::kDec, 20.0)), Outcome::kDone);
  const Ticket ticket = mount->SetSite({-33.9, 151.2, 10});
  // The move ends by itself.
  EXPECT_EQ(Of(ticket), Outcome::kDone);
  const auto moves = controller->Commands("$MTMV2=");
  EXPECT_GE(controller->Commands("$SYLOC=").at(0).timeMs,
            moves.back().timeMs + std::stod(moves.back().bytes.substr(7)) * 1000.0);
}

TEST_F(MountHandOver, ALaterSiteOvertakesOneThatWaits) {
  ASSERT_EQ(Of(mount->MoveAxis(velquin::Axis::kDec, 20.0)), Outcome::kDone);
  const Ticket first = mount->SetSite({1.0, 2.0, 3});
  const Ticket second = mount->SetSite({-33.9, 151.2, 10});
  EXPECT_EQ(Of(first), Outcome::kOvertaken);
  EXPECT_EQ(Of(second), Outcome::kDone);
  EXPECT_EQ(controller->Commands("$SYLOC=").size(), 1u);
}

TEST_F(MountHandOver, TheClockIsSetOnTheFullMinute) {
  const auto ahead = Ahead() + 300ms;  // the mount's clock is that much behind
  EXPECT_EQ(Of(mount->SetClock(ahead)), Outcome::kDone);
  // Midnight and a minute, universal time, nine hours east of it.
  EXPECT_EQ(controller->Commands("$SYLTM=").at(0).bytes, "$SYLTM=2023,02,25,09,01,00.0");
  EXPECT_NEAR(Error(ahead), 0.0, 0.03);
  EXPECT_TRUE(controller->Commands("$MTINI=").empty());
}

TEST_F(MountHandOver, AClockThatWasAMinuteOffMakesTheControllerInitialise) {
  const auto ahead = Ahead() + 2h;
  EXPECT_EQ(Of(mount->SetClock(ahead)), Outcome::kDone);
  EXPECT_EQ(controller->Commands("$SYLTM=").at(0).bytes, "$SYLTM=2023,02,25,11,01,00.0");
  EXPECT_NEAR(Error(ahead), 0.0, 0.03);
  ASSERT_EQ(controller->Commands("$MTINI=1").size(), 1u);
  EXPECT_GT(controller->Commands("$MTINI=1")[0].timeMs, controller->Commands("$SYLTM=")[0].timeMs);
}

TEST_F(MountHandOver, TheClockIsNotSetWhileTheMountMoves) {
  const auto ahead = Ahead();
  const Ticket ticket = mount->SetClock(ahead);
  const auto end = std::chrono::steady_clock::now() + 5s;  // the minute is three seconds away
  while (std::chrono::steady_clock::now() < end) {
    ASSERT_EQ(Of(mount->MoveAxis(velquin::Axis::kDec, 20.0)), Outcome::kDone);
    std::this_thread::sleep_for(100ms);  // how often the caller renews
  }
  EXPECT_TRUE(controller->Commands("$SYLTM=").empty());
  EXPECT_FALSE(ticket.IsKnown());
}

// The move begins in the last moment, when the clock's command was prepared.
TEST_F(MountHandOver, TheClockIsNotSetWhenAMoveBeginsJustBefore) {
  const auto ahead = Ahead();
  const Ticket ticket = mount->SetClock(ahead);
  const auto right = std::chrono::system_clock::now() + ahead;
  const auto minute = std::chrono::ceil<std::chrono::minutes>(right);
  std::this_thread::sleep_for(minute - right - 120ms);  // until shortly before the minute
  ASSERT_EQ(Of(mount->MoveAxis(velquin::Axis::kDec, 20.0)), Outcome::kDone);
  EXPECT_FALSE(Eventually([&] { return !controller->Commands("$SYLTM=").empty(); }, 1s));
  EXPECT_FALSE(ticket.IsKnown());
}

TEST_F(MountHandOver, AnUnansweredClockIsNotRepeatedWithinTheMinute) {
  events = EventLog();
  simulator::SimulatorOptions options = BeforeTheMinute();
  options.faults = [](int, std::string_view command) {
    return simulator::Fault{.losesReply = command.starts_with("$SYLTM")};
  };
  Begin(options);
  const Ticket ticket = mount->SetClock(Ahead());
  ASSERT_TRUE(Eventually([&] { return !controller->Commands("$SYLTM=").empty(); }, kSoon));
  EXPECT_FALSE(Eventually([&] { return controller->Commands("$SYLTM=").size() > 1; }, 2s));
  EXPECT_FALSE(ticket.IsKnown());
}

TEST_F(MountHandOver, ALaterClockOvertakesOneThatWaits) {
  const Ticket first = mount->SetClock(Ahead() + 2h);
  const Ticket second = mount->SetClock(Ahead());
  EXPECT_EQ(Of(first), Outcome::kOvertaken);
  EXPECT_EQ(Of(second), Outcome::kDone);
  EXPECT_TRUE(controller->Commands("$MTINI=").empty());
}

}  // namespace
