// SPDX-License-Identifier: MIT
// Operating-system seam: INI files, as the Windows profile calls read them. Any thread.
#pragma once

#include <cstddef>

namespace platform {

/// Reads one key of one section as text, cut to `size` - 1 characters and always terminated by NUL.
/// Section and key are case-insensitive. If the file, section or key is missing, `fallback` is
/// copied.
/// @param file path in the system code page; Windows looks up a bare name in its own folder
void ReadIniText(const char* file, const char* section, const char* key, const char* fallback,
                 char* buffer, size_t size);

}  // namespace platform
