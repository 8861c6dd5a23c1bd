// SPDX-License-Identifier: MIT
// What a link must have made of a wire: from the controller's own log of what came and what was
// sent when, the replies that the link took, and the failures that it must have noted. Written from
// the rules, not from the link: one datagram an exchange, the oldest first, whoever sent it; half a
// second's patience; bytes without a line end wait for the next datagram; an empty datagram closes.
// Pure; any thread.
#pragma once

#include <string>
#include <vector>

#include "simulator/wire_record.h"

/// One line of the time-out journal, without its time.
struct JournalEntry {
  std::string command;
  std::string reason;
  bool operator==(const JournalEntry&) const = default;
};

struct ModelExchange {
  double sentMs;        ///< when the command came to the controller
  double endMs;         ///< when the link had its datagram, or gave up
  std::string command;  ///< without line end
  std::string reply;    ///< the line that the link took; empty when none
};

struct LinkHistory {
  std::vector<ModelExchange> exchanges;
  std::vector<JournalEntry> failures;
  std::vector<double> failedMs;  ///< when the exchange of each failure was over
  bool closed = false;           ///< an empty datagram has closed the link of the last session
  double narrowMs = 1e9;  ///< how close to the end of the link's patience a datagram came or missed
  int unclear = 0;  ///< how many datagrams came too close to it to tell whether they were taken
};

/// What became of a datagram that came so close to the end of the link's patience that the wire
/// does not tell.
enum class Unclear {
  kByTheClock,  ///< as its time says
  kMissed,      ///< too late: the exchange timed out, and the datagram waits for the next one
  kTaken,       ///< just in time
  kTakenSlow,   ///< in time, but the exchange took more than half a second, which is noted
};
constexpr int kUnclearCases = 4;

/// @param log       of one session after the other, each with a port of its own
/// @param unclearMs before and after the end of the patience, within which a datagram is unclear
/// @param cases     what became of the unclear ones, in their order; the others by the clock
LinkHistory WhatTheLinkMade(const std::vector<simulator::WireDatagram>& log, double unclearMs = 0.0,
                            const std::vector<Unclear>& cases = {});

/// Of the histories that a log leaves open, the one that made this journal.
/// @return the history by the clock when there is none
LinkHistory HistoryOfJournal(const std::vector<simulator::WireDatagram>& log, double unclearMs,
                             const std::vector<JournalEntry>& journal);

struct SkyPosition {
  double ra;   ///< degrees
  double dec;  ///< degrees
  bool operator==(const SkyPosition&) const = default;
};

/// @return the positions that the polls of a history give, in their order.
std::vector<SkyPosition> PolledPositions(const LinkHistory& history);
