// SPDX-License-Identifier: MIT
// The handles that this process has open, counted in the system's table of all handles:
// GetProcessHandleCount always says 0 under Wine.
#pragma once

#include <windows.h>

#include <vector>

/// @return them in no certain order. Any thread; throws std::runtime_error when the system gives no
/// answer.
std::vector<HANDLE> OwnHandles();
