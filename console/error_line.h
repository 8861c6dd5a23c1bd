// SPDX-License-Identifier: MIT
// What is said about something that went wrong, made fit for the one line that it gets.
#pragma once

#include <string>

namespace velquinctl {

/// @param text of any length, in UTF-8, perhaps with what somebody wrote in it
/// @return it without control characters, each of which becomes a blank, and without the middle of
///         a text above 800 bytes
std::string ErrorLine(std::string text);

}  // namespace velquinctl
