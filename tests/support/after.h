// SPDX-License-Identifier: MIT
// The part of a list that begins or ends at an entry. Where the entry is missing the test fails; it
// does not read past the end of the list.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

/// @return the entries after the first one that equals this; nothing, and a failed test, without
/// one
inline std::vector<std::string> After(const std::vector<std::string>& list,
                                      const std::string& entry) {
  const auto found = std::find(list.begin(), list.end(), entry);
  if (found == list.end()) {
    ADD_FAILURE() << entry << " is missing in the list";
    return {};
  }
  return {found + 1, list.end()};
}

/// @return the entries up to the first one that equals this, which is the last one; nothing, and a
/// failed test, without one
inline std::vector<std::string> UpTo(const std::vector<std::string>& list,
                                     const std::string& entry) {
  const auto found = std::find(list.begin(), list.end(), entry);
  if (found == list.end()) {
    ADD_FAILURE() << entry << " is missing in the list";
    return {};
  }
  return {list.begin(), found + 1};
}
