// SPDX-License-Identifier: MIT
// Operating-system seam: folders and files with wide names. Any thread.
#pragma once

#include <cstdio>
#include <string>

namespace platform {

/// The separator between the folders of a path.
#ifdef _WIN32
inline constexpr wchar_t kPathSeparator = L'\\';
#else
inline constexpr wchar_t kPathSeparator = L'/';
#endif

/// @return true if a file or folder of that name exists.
bool PathExists(const std::wstring& path);
/// Creates a folder with all its missing parents. @return false if none was created.
bool CreateFolders(const std::wstring& folder);
/// Opens a text file for writing and empties an existing one. Other processes may read and write
/// it, too.
/// @return the stream, owned by the caller; null if it cannot be opened.
std::FILE* OpenSharedTextFile(const std::wstring& path);

}  // namespace platform
