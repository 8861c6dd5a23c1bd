// SPDX-License-Identifier: MIT
// Texts held against patterns, which are those of std::regex. Only pattern.cpp uses that one,
// because a file that does takes seconds to compile.
#pragma once

#include <string>
#include <vector>

/// @return whether the pattern fits the whole text.
bool FitsPattern(const std::string& text, const std::string& pattern);

/// @return every place where the pattern fits, from left to right: the whole of it, then its
/// groups.
std::vector<std::vector<std::string>> PatternPlaces(const std::string& text,
                                                    const std::string& pattern);
