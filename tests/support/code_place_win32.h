// SPDX-License-Identifier: MIT
// A place in the code as tests/README.md tells how to turn it into a name.
#pragma once

#include <windows.h>

#include <array>

/// @return "MODULE+0xOFFSET"; "?" for the module of an address outside of all. Any thread, also one
/// that has just crashed: it asks for no memory.
std::array<char, 2 * MAX_PATH> CodePlace(DWORD64 address);
