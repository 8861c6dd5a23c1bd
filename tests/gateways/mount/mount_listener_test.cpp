// SPDX-License-Identifier: MIT
// Listeners and callbacks that do everything wrong.
#include <future>
#include <stdexcept>

#include "tests/gateways/mount/scripted_mount.h"

namespace {

using namespace std::chrono_literals;
using velquin::Event;
using velquin::Mount;
using velquin::Outcome;
using velquin::Ticket;

class MountListener : public ScriptedMount {};

TEST_F(MountListener, MayThrow) {
  mount->AddListener([](const Event&) { throw std::runtime_error("a careless listener"); });
  Connect();
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  EXPECT_TRUE(events.WaitFor(Event::Kind::kTicketKnown));
}

TEST_F(MountListener, ThatBlocksHoldsNothingElseUp) {
  const auto goOn = std::make_shared<std::promise<void>>();
  const auto begun = std::make_shared<std::promise<void>>();
  const auto once = std::make_shared<std::atomic<bool>>(false);
  mount->AddListener([=](const Event&) {
    if (once->exchange(true)) return;
    begun->set_value();
    goOn->get_future().wait();
  });
  Connect();
  begun->get_future().wait();
  controller.Clear();
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  EXPECT_TRUE(controller.WaitForCount("$MTSTA?", 5, kSoonMs));
  EXPECT_TRUE(events.WaitFor(Event::Kind::kTicketKnown));
  const auto begin = std::chrono::steady_clock::now();
  mount.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 2s);
  goOn->set_value();
}

TEST_F(MountListener, MayDestroyTheMount) {
  Connect();
  std::promise<void> destroyed;
  std::atomic<bool> once = false;
  mount->AddListener([&](const Event&) {
    if (once.exchange(true)) return;
    mount.reset();
    destroyed.set_value();
  });
  EXPECT_EQ(destroyed.get_future().wait_for(kSoon), std::future_status::ready);
}

TEST_F(MountListener, ACallbackOfATicketMayDestroyTheMount) {
  Connect();
  controller.Answers("$MTSTP=1", simulator::Late("$MTSTP=1", 50));
  std::promise<void> destroyed;
  mount->Stop().OnKnown([&](Outcome) {
    mount.reset();
    destroyed.set_value();
  });
  EXPECT_EQ(destroyed.get_future().wait_for(kSoon), std::future_status::ready);
}

TEST_F(MountListener, HearsNothingAfterItWasRemoved) {
  EventLog others;
  const uint64_t number = mount->AddListener(others.AsListener());
  Connect();
  mount->RemoveListener(number);
  const size_t heard = others.All().size();
  EXPECT_EQ(Of(mount->Stop()), Outcome::kDone);
  ASSERT_TRUE(events.WaitFor(Event::Kind::kTicketKnown));
  EXPECT_EQ(others.All().size(), heard);
}

TEST_F(MountListener, TheEndOfTheMountEndsEveryTicketAndCallsBack) {
  Connect();
  controller.Status(kSlewing);
  std::vector<Ticket> tickets = {mount->Goto(kTarget), mount->SetSite({1.0, 2.0, 3}),
                                 mount->SetClock(), mount->Guide({1s, 0us})};
  std::atomic<int> calls = 0;
  for (const Ticket& ticket : tickets) ticket.OnKnown([&](Outcome) { ++calls; });
  mount.reset();
  for (const Ticket& ticket : tickets) EXPECT_TRUE(ticket.IsKnown());
  EXPECT_TRUE(Eventually([&] { return calls == 4; }, kSoon));
}

// A listener sees the events of a request in their order: the snapshot first.
TEST_F(MountListener, HearsOfTheSnapshotBeforeTheOutcome) {
  Connect();
  controller.AnswersInTurn("$MTSTA?", {Line(kSlewing), Line(kAtTarget)});
  const Ticket ticket = mount->Goto(kTarget);
  ASSERT_TRUE(events.WaitFor(Event::Kind::kTicketKnown));
  bool arrived = false;
  for (const Event& event : events.All()) {
    const bool isArrival = event.snapshot.position.decDegrees == 22.0;
    if (event.kind == Event::Kind::kSnapshot && isArrival) arrived = true;
    if (event.kind != Event::Kind::kTicketKnown) continue;
    EXPECT_TRUE(arrived);
    EXPECT_EQ(event.ticketId, ticket.Id());
  }
}

}  // namespace
