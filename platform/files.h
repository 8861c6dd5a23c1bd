// SPDX-License-Identifier: MIT
// The seam to folders and files with wide names. Any thread.
#pragma once

#include <cstdio>
#include <string>

namespace platform {

/// What stands between the folders of a path.
#ifdef _WIN32
inline constexpr wchar_t kPathSeparator = L'\\';
#else
inline constexpr wchar_t kPathSeparator = L'/';
#endif

/// @return true when there is a file or folder of that name.
bool PathExists(const std::wstring& path);
/// Makes a folder with all its missing parents. @return false when nothing was made.
bool CreateFolders(const std::wstring& folder);
/// Opens a text file for writing and empties one that is there; others may read and write it too.
/// @return the stream, owned by the caller; null when it cannot be opened.
std::FILE* OpenSharedTextFile(const std::wstring& path);

}  // namespace platform
