// SPDX-License-Identifier: MIT
// The sounds that the library asked the system for, kept instead of played.
#pragma once

#include <windows.h>

#include <vector>

namespace ui_test {

/// @return the kinds asked for since the last call.
std::vector<UINT> TakeSounds();

}  // namespace ui_test
