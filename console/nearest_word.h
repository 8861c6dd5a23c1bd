// SPDX-License-Identifier: MIT
// Guesses which word was meant by a mistyped one. Pure, any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace velquinctl {

/// @param word as it was typed
/// @param known the words that exist
/// @return the known word that is reached with the fewest changes (a letter inserted, deleted or
///         replaced, two neighbours swapped); empty when none is close enough: one change for words
///         of up to five letters, two for longer ones
std::string NearestWord(std::string_view word, const std::vector<std::string>& known);

}  // namespace velquinctl
