// SPDX-License-Identifier: MIT
#include "platform/known_folders.h"

#include <cstdlib>
#include <filesystem>

namespace platform {

bool LocalAppDataFolder(std::wstring& folder) {
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data != '\0') {
    folder = std::filesystem::path(data).wstring();
    return true;
  }
  const char* home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') return false;
  folder = (std::filesystem::path(home) / ".local/share").wstring();
  return true;
}

}  // namespace platform
