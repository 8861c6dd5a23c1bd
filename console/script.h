// SPDX-License-Identifier: MIT
// A file of commands, read whole and judged before the first one is performed. Pure, any thread.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "console/request.h"

namespace velquinctl {

/// One line of a script that asks for something.
struct ScriptLine {
  int number = 0;    ///< counted from 1, as editors do
  std::string text;  ///< as it stands, without blanks around it
  Request request;
};

/// Reads a script: a command a line, blank lines, # comments, "quoted words".
/// @param bytes the whole file, as ScriptText reads it
/// @param fileName for the messages
/// @param defaults options that hold for every line that says nothing else
/// @throws Failure with kWrongUsage and "FILE:LINE: what is wrong" for the first wrong line, and
///         what ScriptText throws
std::vector<ScriptLine> ParseScript(std::string_view bytes, const std::string& fileName,
                                    const CommonOptions& defaults);

/// Splits a line into words at blanks; # begins a comment where a word could begin. Within double
/// quotes blanks and # are letters like others; a quote opens where a word or an option's value
/// begins, so 31" stays what it is.
/// @return false when a quote is not closed.
bool SplitScriptLine(std::string_view line, std::vector<std::string>& words);

}  // namespace velquinctl
