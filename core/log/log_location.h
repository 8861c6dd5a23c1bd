// SPDX-License-Identifier: MIT
// Where the log file lies. Any thread.
#pragma once

#include <string>

namespace logging::orlin {

/// Builds the path of a file in a folder below the user's local application data. The folder is
/// joined with a backslash even when it contains slashes; Windows takes both.
/// @param create make the folder, with its parents, when it is missing
/// @return the path; empty when the base folder cannot be had, or the folder is missing and is not
///         or cannot be made.
std::wstring GetLogFilePath(const std::wstring& folder, const std::wstring& file, bool create);

}  // namespace logging::orlin
