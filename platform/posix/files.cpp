// SPDX-License-Identifier: MIT
#include "platform/files.h"

#include <filesystem>
#include <system_error>

namespace platform {

bool PathExists(const std::wstring& path) {
  std::error_code error;
  return std::filesystem::exists(path, error);
}

bool CreateFolders(const std::wstring& folder) {
  std::error_code error;
  return std::filesystem::create_directories(folder, error);
}

std::FILE* OpenSharedTextFile(const std::wstring& path) {
  return std::fopen(std::filesystem::path(path).c_str(), "w");
}

}  // namespace platform
