// SPDX-License-Identifier: MIT
// Reads velquin.dll's time-out journal as evidence. The exports do not tell what became of a
// command; the journal has a line for each exchange that failed or was slow:
//   HH:MM:SS COMMAND : REASON
// A command without a line was answered. Two things leave no line: what follows a closed link, and
// a datagram that the system refused to send. Pure; any thread.
#pragma once

#include <string_view>

#include "console/session_outcome.h"

namespace velquinctl {

/// @param journal the whole file, written after the last command was performed; empty when the
///        driver had nothing to write
/// @return what it proves; Unknown for a text that is not a whole journal.
SessionOutcome OutcomeFromJournal(std::string_view journal);

/// @param before the whole journal of a session that is over
/// @param after the same, after a probe (TelescopeCheck) that had no answer
/// @return whether the probe's datagram was sent: it then has a line of its own behind the others.
bool ProbeWasSent(std::string_view before, std::string_view after);

}  // namespace velquinctl
