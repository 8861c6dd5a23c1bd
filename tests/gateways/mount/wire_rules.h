// SPDX-License-Identifier: MIT
// What must hold on the wire between a mount service and its controller, whatever happened. Pure
// functions; each adds a sentence to `broken` for everything that does not hold.
#pragma once

#include <string>
#include <vector>

#include "gateways/mount/mount.h"
#include "simulator/wire_record.h"

using Broken = std::vector<std::string>;

/// Every exchange has a port that no exchange shortly before had, so that an answer can only reach
/// the exchange that asked for it.
void CheckPorts(const std::vector<simulator::WireDatagram>& wire, Broken& broken);

/// No pulse is sent twice. @param moves the texts of "$MTMV2=" commands, all meant to differ but
/// for those that end a motion
void CheckMoves(const std::vector<simulator::WireDatagram>& moves, Broken& broken);

/// Snapshots are numbered upwards, and none shows an older status than the one before.
/// @param isClockSteady false when the controller's clock was set, or answers were garbled
void CheckSnapshots(const std::vector<velquin::Event>& events, bool isClockSteady, Broken& broken);

/// Every ticket was told exactly once.
void CheckTickets(const std::vector<velquin::Event>& events,
                  const std::vector<velquin::Ticket>& tickets, Broken& broken);
