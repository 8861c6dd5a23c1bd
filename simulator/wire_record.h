// SPDX-License-Identifier: MIT
// The record of a wire: every datagram with its time and its fault, as a value and as a line of
// text, to be read by people and to be replayed. Free functions; any thread.
#pragma once

#include <map>
#include <string>
#include <string_view>

#include "simulator/fault.h"

namespace simulator {

enum class WireDirection {
  kIn,       ///< a command from the host, lost ones included
  kOut,      ///< sent to the host
  kForeign,  ///< sent to the host from another port
  kLost,     ///< a reply that a fault kept from being sent
};

struct WireDatagram {
  double timeMs = 0.0;  ///< since the controller began
  int exchange = 0;     ///< counts from 1; 0 for what belongs to none
  WireDirection direction = WireDirection::kIn;
  std::string peer;  ///< the host's "address:port"
  Fault fault;       ///< of the exchange
  std::string bytes;
};

/// First line of a record's file, without line end.
inline constexpr const char* kWireRecordTitle =
    "# velquin-sim record 1: milliseconds, exchange, direction, host, faults, bytes";

/// @return one line of the file, without line end; bytes that cannot be printed as \r, \n, \xHH.
std::string WireRecordLine(const WireDatagram& datagram);

/// The faults of a record, by the number of the exchange.
using RecordedFaults = std::map<int, Fault>;

/// Reads what a record says about its exchanges: of every "in" line, number and faults.
/// @param text the whole file
/// @param complaint gets a line for a person when the text is no record
/// @return false for such a text
bool ReadWireRecord(std::string_view text, RecordedFaults& faults, std::string& complaint);

/// @return the chooser that repeats these faults; exchanges that the record lacks go well. A
/// silence
///         of the last one has no end.
FaultChooser ReplayOf(RecordedFaults faults);

}  // namespace simulator
