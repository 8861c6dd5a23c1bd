// SPDX-License-Identifier: MIT
// Whole files as they are on the disk, byte by byte.
#pragma once

#include <filesystem>
#include <optional>
#include <string>

/// @return the file's bytes, line ends untouched; nothing when it cannot be read
std::optional<std::string> ReadWholeFile(const std::filesystem::path& path);

/// Replaces the file's contents; a file that cannot be written ends the test with an exception.
void WriteWholeFile(const std::filesystem::path& path, const std::string& bytes);
