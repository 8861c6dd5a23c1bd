// SPDX-License-Identifier: MIT
// Conversion between wide names and the system's UTF-8 names. The standard library converts wide
// characters by the process's locale, and fails at the first Japanese one in the default locale.
#pragma once

#include <filesystem>
#include <string>

namespace platform {

inline std::filesystem::path FromWide(const std::wstring& wide) {
  return std::u32string(wide.begin(), wide.end());
}

/// Throws std::filesystem::filesystem_error if the path is not UTF-8.
inline std::wstring ToWide(const std::filesystem::path& path) {
  const std::u32string wide = path.u32string();
  return {wide.begin(), wide.end()};
}

}  // namespace platform
