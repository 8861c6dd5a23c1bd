// SPDX-License-Identifier: MIT
// Operating-system seam: the folders that the system assigns to the user. Any thread.
#pragma once

#include <string>

namespace platform {

/// Finds the current user's local application-data folder (without a separator at its end).
/// @return false if the system has none.
bool LocalAppDataFolder(std::wstring& folder);

}  // namespace platform
