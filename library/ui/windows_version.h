// SPDX-License-Identifier: MIT
// Which Windows this is, where the look depends on it.
#pragma once

/// @return true on Windows 8 (version 6.2) and later, which centre the caption. Any thread.
bool IsWindows8OrLater();
