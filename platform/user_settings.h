// SPDX-License-Identifier: MIT
// The seam to the current user's settings: the registry on Windows, files below the user's
// configuration folder elsewhere. Any thread.
#pragma once

#include <cstddef>

namespace platform {

/// Reads one value as raw bytes; the bytes that follow it in `buffer` are left as they are.
/// @param key path of the setting below the user's root, with backslashes
/// @param value name of the value
/// @return false when there is no such key or value, or when it does not fit into `size` bytes.
bool ReadUserSetting(const char* key, const char* value, char* buffer, size_t size);

}  // namespace platform
