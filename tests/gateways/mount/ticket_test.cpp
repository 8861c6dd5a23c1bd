// SPDX-License-Identifier: MIT
#include "gateways/mount/ticket.h"

#include <gmock/gmock.h>

#include <stdexcept>
#include <thread>

#include "gateways/mount/ticket_state.h"

namespace {

using velquin::Outcome;
using velquin::Ticket;
using velquin::TicketState;

class TicketTest : public testing::Test {
 protected:
  bool End(Outcome outcome) {
    std::vector<Ticket::Callback> callbacks;
    const bool isFirst = state->Complete(outcome, callbacks);
    for (const auto& callback : callbacks) callback(outcome);
    return isFirst;
  }
  std::shared_ptr<TicketState> state = std::make_shared<TicketState>();
  Ticket ticket{state};
};

TEST_F(TicketTest, HasNoOutcomeAtFirst) {
  EXPECT_FALSE(ticket.IsKnown());
  EXPECT_EQ(ticket.WaitFor(std::chrono::milliseconds(1)), std::nullopt);
}

TEST_F(TicketTest, KeepsItsFirstOutcome) {
  EXPECT_TRUE(End(Outcome::kDone));
  EXPECT_FALSE(End(Outcome::kRefused));
  EXPECT_EQ(ticket.Result(), Outcome::kDone);
}

TEST_F(TicketTest, WakesWhoeverWaits) {
  std::thread waiting(
      [&] { EXPECT_EQ(ticket.WaitFor(std::chrono::seconds(20)), Outcome::kBelowHorizon); });
  End(Outcome::kBelowHorizon);
  waiting.join();
}

TEST_F(TicketTest, CallsEachCallbackOnce) {
  int calls = 0;
  ticket.OnKnown([&](Outcome outcome) { calls += outcome == Outcome::kParked ? 1 : 100; });
  Ticket copy = ticket;
  copy.OnKnown([&](Outcome) { calls += 10; });
  End(Outcome::kParked);
  End(Outcome::kDone);
  EXPECT_EQ(calls, 11);
}

TEST_F(TicketTest, CallsBackAtOnceWhenTheOutcomeIsKnown) {
  End(Outcome::kRefused);
  std::optional<Outcome> seen;
  ticket.OnKnown([&](Outcome outcome) {
    seen = outcome;
    throw std::runtime_error("a careless caller");
  });
  EXPECT_EQ(seen, Outcome::kRefused);
}

TEST_F(TicketTest, HasANumberOfItsOwn) {
  EXPECT_NE(ticket.Id(), Ticket(std::make_shared<TicketState>()).Id());
  EXPECT_EQ(ticket.Id(), Ticket(ticket).Id());
}

TEST(OutcomeText, SaysSomethingAboutEach) {
  for (int i = 0; i <= static_cast<int>(Outcome::kStoppedElsewhere); ++i) {
    EXPECT_STRNE(Text(static_cast<Outcome>(i)), "") << i;
  }
}

}  // namespace
