// SPDX-License-Identifier: MIT
#include "console/nearest_word.h"

#include <algorithm>

namespace velquinctl {
namespace {

constexpr size_t kLongestWord = 40;

/// @return how many letters must be inserted, deleted, replaced or swapped with the next one to
/// turn
///         one word into the other.
size_t Changes(std::string_view from, std::string_view to) {
  std::vector<std::vector<size_t>> changes(from.size() + 1, std::vector<size_t>(to.size() + 1));
  for (size_t i = 0; i <= from.size(); ++i) {
    for (size_t k = 0; k <= to.size(); ++k) {
      if (i == 0 || k == 0) {
        changes[i][k] = i + k;
        continue;
      }
      const size_t replaced = changes[i - 1][k - 1] + (from[i - 1] == to[k - 1] ? 0 : 1);
      changes[i][k] = std::min({replaced, changes[i - 1][k] + 1, changes[i][k - 1] + 1});
      if (i > 1 && k > 1 && from[i - 1] == to[k - 2] && from[i - 2] == to[k - 1])
        changes[i][k] = std::min(changes[i][k], changes[i - 2][k - 2] + 1);
    }
  }
  return changes[from.size()][to.size()];
}

size_t Letters(std::string_view word) {
  return static_cast<size_t>(
      std::count_if(word.begin(), word.end(), [](char c) { return c != '-'; }));
}

}  // namespace

std::string NearestWord(std::string_view word, const std::vector<std::string>& known) {
  if (word.size() > kLongestWord) return {};
  std::string nearest;
  size_t fewest = Letters(word) > 5 ? 3 : 2;
  for (const std::string& candidate : known) {
    const size_t changes = Changes(word, candidate);
    if (changes >= fewest) continue;
    fewest = changes;
    nearest = candidate;
  }
  return nearest;
}

}  // namespace velquinctl
