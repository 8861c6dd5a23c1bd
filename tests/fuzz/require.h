// SPDX-License-Identifier: MIT
// How a fuzz target says that a property does not hold.
#pragma once

#include <stdexcept>
#include <string>

/// Ends a fuzzer as a finding, and fails the test that replays the corpus.
class BrokenProperty : public std::logic_error {
 public:
  using std::logic_error::logic_error;
};

/// @param property what must hold, in words
inline void Require(bool holds, const char* property) {
  if (!holds) throw BrokenProperty(property);
}

/// The same for a text, which is shown when it is wrong.
inline void RequireSame(const std::string& found, const std::string& expected, const char* what) {
  if (found == expected) return;
  throw BrokenProperty(std::string(what) + ": found '" + found + "', expected '" + expected + "'");
}
