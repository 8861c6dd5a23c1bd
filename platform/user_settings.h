// SPDX-License-Identifier: MIT
// Operating-system seam: the current user's settings. They are in the registry on Windows, and in
// files below the user's configuration folder elsewhere. Any thread.
#pragma once

#include <cstddef>

namespace platform {

/// Reads one value as raw bytes; the bytes after it in `buffer` do not change.
/// @param key path of the setting below the user's root, with backslashes
/// @param value name of the value
/// @return false if there is no such key or value, or if it does not fit into `size` bytes.
bool ReadUserSetting(const char* key, const char* value, char* buffer, size_t size);

}  // namespace platform
