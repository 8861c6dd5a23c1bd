// SPDX-License-Identifier: MIT
#include "tests/gateways/mount/wire_rules.h"

#include <algorithm>
#include <deque>
#include <map>
#include <set>

using velquin::Event;

void CheckPorts(const std::vector<simulator::WireDatagram>& wire, Broken& broken) {
  constexpr size_t kWindow = 64;
  std::deque<std::string> last;
  for (const simulator::WireDatagram& datagram : wire) {
    if (datagram.direction != simulator::WireDirection::kIn) continue;
    if (std::find(last.begin(), last.end(), datagram.peer) != last.end()) {
      broken.push_back("exchange " + std::to_string(datagram.exchange) + " shares a port");
    }
    last.push_back(datagram.peer);
    if (last.size() >= kWindow) last.pop_front();
  }
}

void CheckMoves(const std::vector<simulator::WireDatagram>& moves, Broken& broken) {
  std::set<std::string> seen;
  for (const simulator::WireDatagram& move : moves) {
    const bool ends = move.bytes.ends_with(",0.000000,0.000000");
    if (!ends && !seen.insert(move.bytes).second) broken.push_back("sent twice: " + move.bytes);
  }
}

void CheckSnapshots(const std::vector<Event>& events, bool isClockSteady, Broken& broken) {
  uint64_t sequence = 0;
  double clock = 0.0;
  for (const Event& event : events) {
    if (event.kind != Event::Kind::kSnapshot) continue;
    if (event.snapshot.sequence <= sequence) broken.push_back("a snapshot came out of order");
    sequence = event.snapshot.sequence;
    if (!event.snapshot.hasReading) continue;
    if (isClockSteady && event.snapshot.controllerMjd < clock) {
      broken.push_back("a status came after a newer one");
    }
    clock = event.snapshot.controllerMjd;
  }
}

void CheckTickets(const std::vector<Event>& events, const std::vector<velquin::Ticket>& tickets,
                  Broken& broken) {
  std::map<uint64_t, int> told;
  for (const Event& event : events) {
    if (event.kind == Event::Kind::kTicketKnown) ++told[event.ticketId];
  }
  for (const velquin::Ticket& ticket : tickets) {
    const int times = told[ticket.Id()];
    if (times != 1) broken.push_back("a ticket was told " + std::to_string(times) + " times");
  }
}
