// SPDX-License-Identifier: MIT
// The time-out journal: every failed or slow exchange, one line each, in a text file that is named
// after the moment of writing. A diagnostic record; nothing reads it back.
#pragma once

#include <ctime>

#include "core/net/time_out_error.h"
#include "framework/base/cstring.h"

/// Writes the whole list to a new file; does nothing when the list is empty or the file cannot be
/// made. Throws CAtlException (invalid argument) when the local time cannot be had.
/// @param folder put before the name as it stands, so it must end with a separator; may be empty
/// @param prefix first part of the file name; may be empty
void WriteTimeOutJournal(const TimeOutErrorList& errors, const char* folder, const char* prefix);

/// @return folder + prefix + "_timeouterr_korvelwireless_" + time + ".txt".
CString TimeOutJournalPath(const char* folder, const char* prefix, const std::tm& localTime);

/// @return one line, with "\n": the time since the host process started, command and reason.
CString TimeOutJournalLine(const TimeOutErrorW& error);
