// SPDX-License-Identifier: MIT
// The fuzz targets. Each takes one input apart, drives the code under test with it and compares
// what comes out with a model of its own, written from the rules and without the code's helpers.
// Throws BrokenProperty. One thread.
#pragma once

#include "tests/fuzz/fuzz_input.h"

/// CStringSep: splitting, trimming, numbers, comparison, indices outside.
void FuzzStringSep(FuzzInput input);
/// DecodeStatus, and ReadStatus on a session that gets the line as a datagram.
void FuzzStatus(FuzzInput input);
/// CUdpLink::CommandKey, and what Query makes of the keys of a command and its reply.
void FuzzCommandKey(FuzzInput input);
/// CUdpLink: any calls, with any datagrams, failures and times, against a model of its buffer.
void FuzzUdpLink(FuzzInput input);
/// The meridian overrides: from the text of an INI file to the line on the wire.
void FuzzMeridianIni(FuzzInput input);
/// The simulator's command language and the mount behind it.
void FuzzCommandInterpreter(FuzzInput input);
