// SPDX-License-Identifier: MIT
// The text of a script's bytes: Windows' editors and shells write UTF-8 and UTF-16. Pure, any
// thread.
#pragma once

#include <string>
#include <string_view>

namespace velquinctl {

/// @param bytes the whole file: UTF-16 of either byte order when it begins with a byte order mark
/// of
///        UTF-16, else UTF-8 with or without a mark
/// @param fileName for the message
/// @return the text in UTF-8, without the mark; lines that are not UTF-8 stay as they are
/// @throws Failure with kWrongUsage and "FILE: what is wrong" when UTF-16 is cut off or not valid,
/// and
///         for a file with NUL bytes, which is not text or UTF-16 without a mark
std::string ScriptText(std::string_view bytes, const std::string& fileName);

/// @return whether a text is valid UTF-8.
bool IsUtf8(std::string_view text);

}  // namespace velquinctl
