// SPDX-License-Identifier: MIT
// Tests for the Windows versions that change the look.
#pragma once

/// @return true on Windows 8 (version 6.2) and later, which centre the caption. Any thread.
bool IsWindows8OrLater();
