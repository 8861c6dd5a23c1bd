// SPDX-License-Identifier: MIT
// Files and folders of the machine; every path is UTF-8. Any thread.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace velquinctl {

/// @return the path from the root on, seen from the current folder.
std::string FullPath(const std::string& path);
bool IsFile(const std::string& path);
bool IsFolder(const std::string& path);
/// @return the user's folder for files that nobody needs to keep, with a separator at its end.
std::string TemporaryFolder();
/// @param longest of bytes; of a longer file, or one that has no end, as many and one more are read
/// @return the content, or nothing when the file cannot be read.
std::optional<std::string> FileContent(const std::string& path, size_t longest);

}  // namespace velquinctl
