// SPDX-License-Identifier: MIT
// Hosts that are programs of their own.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

constexpr DWORD kHung = 0xDEAD;

/// Runs a program that lies beside this one, for half a minute at the most.
/// @param arguments words without blanks
/// @return its exit code, or kHung (and the test fails) when it cannot be run or had to be ended.
DWORD RunProgram(const std::string& program, const std::vector<std::string>& arguments);
