// SPDX-License-Identifier: MIT
#include "platform/files.h"

#include <filesystem>
#include <system_error>

#include "platform/posix/wide_path.h"

namespace platform {

bool PathExists(const std::wstring& path) {
  std::error_code error;
  return std::filesystem::exists(FromWide(path), error);
}

bool CreateFolders(const std::wstring& folder) {
  std::error_code error;
  return std::filesystem::create_directories(FromWide(folder), error);
}

std::FILE* OpenSharedTextFile(const std::wstring& path) {
  return std::fopen(FromWide(path).c_str(), "w");
}

}  // namespace platform
