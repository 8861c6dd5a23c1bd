// SPDX-License-Identifier: MIT
// What the machine under Wine does for a test that Windows programs cannot do themselves.
#pragma once

#include <filesystem>
#include <string>

/// @return this machine's own name of a Windows path, in UTF-8.
/// Throws std::runtime_error for a path that does not exist, and on a real Windows.
std::string MachinePath(const std::filesystem::path& path);

/// Starts this machine's shell; nobody waits for its end. @param script without double quotes
/// @return whether it was started.
bool StartShell(const std::string& script);
