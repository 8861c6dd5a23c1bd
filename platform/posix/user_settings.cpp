// SPDX-License-Identifier: MIT
#include "platform/user_settings.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

namespace platform {
namespace {

std::filesystem::path ConfigFolder() {
  const char* config = std::getenv("XDG_CONFIG_HOME");
  if (config != nullptr && *config != '\0') return config;
  const char* home = std::getenv("HOME");
  return std::filesystem::path(home == nullptr ? "/" : home) / ".config";
}

}  // namespace

// A key "A\B" with the value "C" is the file A/B/C below the configuration folder.
bool ReadUserSetting(const char* key, const char* value, char* buffer, size_t size) {
  std::string folders = key;
  std::replace(folders.begin(), folders.end(), '\\', '/');
  const std::filesystem::path file = ConfigFolder() / folders / value;
  std::error_code error;
  const auto length = std::filesystem::file_size(file, error);
  if (error || length > size) return false;
  std::ifstream stream(file, std::ios::binary);
  return static_cast<bool>(stream.read(buffer, static_cast<std::streamsize>(length)));
}

}  // namespace platform
