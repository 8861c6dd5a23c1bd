// SPDX-License-Identifier: MIT
#include "platform/known_folders.h"

#include <cstdlib>
#include <filesystem>

#include "platform/posix/wide_path.h"

namespace platform {

bool LocalAppDataFolder(std::wstring& folder) {
  const char* data = std::getenv("XDG_DATA_HOME");
  const char* home = std::getenv("HOME");
  std::filesystem::path path;
  if (data != nullptr && *data != '\0') {
    path = data;
  } else if (home != nullptr && *home != '\0') {
    path = std::filesystem::path(home) / ".local/share";
  } else {
    return false;
  }
  try {
    folder = ToWide(path);
  } catch (const std::filesystem::filesystem_error&) {
    return false;
  }
  return true;
}

}  // namespace platform
