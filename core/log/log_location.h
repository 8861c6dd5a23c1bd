// SPDX-License-Identifier: MIT
// The path of the log file. Any thread.
#pragma once

#include <string>

namespace logging::orlin {

/// Builds the path of a file in a folder below the user's local application data. The folder is
/// joined with a backslash even if it contains slashes; Windows accepts both.
/// @param create creates a missing folder, with its parents
/// @return the path; empty if the base folder is unknown, or if the folder is missing and is not or
///         cannot be created.
std::wstring GetLogFilePath(const std::wstring& folder, const std::wstring& file, bool create);

}  // namespace logging::orlin
