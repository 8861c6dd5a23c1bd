// SPDX-License-Identifier: MIT
#include "tests/support/pattern.h"

#include <regex>

bool FitsPattern(const std::string& text, const std::string& pattern) {
  return std::regex_match(text, std::regex(pattern));
}

std::vector<std::vector<std::string>> PatternPlaces(const std::string& text,
                                                    const std::string& pattern) {
  const std::regex form(pattern);
  std::vector<std::vector<std::string>> places;
  for (std::sregex_iterator at(text.begin(), text.end(), form), end; at != end; ++at) {
    places.emplace_back(at->begin(), at->end());
  }
  return places;
}
