// SPDX-License-Identifier: MIT
// The seam to the INI files of the Windows profile calls. Any thread.
#pragma once

#include <cstddef>

namespace platform {

/// Reads one key of one section as text, cut to `size` - 1 characters and always ended by NUL.
/// Section and key are found without regard to case; the file, section or key may be missing, and
/// `fallback` is then copied.
/// @param file path in the system code page; on Windows a bare name is looked up in its own folder
void ReadIniText(const char* file, const char* section, const char* key, const char* fallback,
                 char* buffer, size_t size);

}  // namespace platform
