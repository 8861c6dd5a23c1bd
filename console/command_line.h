// SPDX-License-Identifier: MIT
// Reads the words of a command line into a Request. Sends nothing, opens nothing.
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "console/request.h"

namespace velquinctl {

/// The text that --help or --version asked for; to be printed as it stands.
struct HelpText {
  std::string text;
};

/// Reads the words after the program's name.
/// @param words UTF-8
/// @param defaults options that hold where the words say nothing else
/// @return what is to be done, or the help that was asked for
/// @throws Failure with kWrongUsage and one line that says what is wrong
std::variant<Request, HelpText> ParseCommandLine(const std::vector<std::string>& words,
                                                 const CommonOptions& defaults);

}  // namespace velquinctl
