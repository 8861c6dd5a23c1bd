// SPDX-License-Identifier: MIT
// The time-out journal: a text file with one line for every failed or slow exchange. Its name
// contains the time of writing. A diagnostic record; the library does not read it.
#pragma once

#include <ctime>

#include "core/net/time_out_error.h"
#include "framework/base/cstring.h"

/// Writes the whole list to a new file; does nothing if the list is empty or the file cannot be
/// created. Throws CAtlException (invalid argument) if the local time is not available.
/// @param folder put before the name unchanged, so it must end with a separator; may be empty
/// @param prefix first part of the file name; may be empty
void WriteTimeOutJournal(const TimeOutErrorList& errors, const char* folder, const char* prefix);

/// @return folder + prefix + "_timeouterr_korvelwireless_" + time + ".txt".
CString TimeOutJournalPath(const char* folder, const char* prefix, const std::tm& localTime);

/// @return one line, with "\n": the time since the host process started, command and reason.
CString TimeOutJournalLine(const TimeOutErrorW& error);
