// SPDX-License-Identifier: MIT
// The kept inputs of one fuzz target: a text file with one input a line, in which everything but
// printable ASCII, and the backslash, is written as "\xNN". scripts/lib/fuzz_corpus.py writes them.
#pragma once

#include <string>
#include <vector>

/// Throws std::runtime_error when the file cannot be read or a line is written otherwise.
std::vector<std::string> ReadCorpusFile(const std::string& path);
