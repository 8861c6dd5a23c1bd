// SPDX-License-Identifier: MIT
// Files and folders of the machine; every path is UTF-8. Any thread.
#pragma once

#include <optional>
#include <string>

namespace velquinctl {

/// @return the path from the root on, seen from the current folder.
std::string FullPath(const std::string& path);
bool IsFile(const std::string& path);
bool IsFolder(const std::string& path);
/// @return the user's folder for files that nobody needs to keep, with a separator at its end.
std::string TemporaryFolder();
/// @return the whole content, or nothing when the file cannot be read.
std::optional<std::string> FileContent(const std::string& path);

}  // namespace velquinctl
