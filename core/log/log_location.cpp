// SPDX-License-Identifier: MIT
#include "core/log/log_location.h"

#include "platform/files.h"
#include "platform/known_folders.h"

namespace logging::orlin {

std::wstring GetLogFilePath(const std::wstring& folder, const std::wstring& file, bool create) {
  std::wstring base;
  if (!platform::LocalAppDataFolder(base)) return L"";
  const std::wstring directory = base + platform::kPathSeparator + folder;
  if (!platform::PathExists(directory)) {
    if (!create || !platform::CreateFolders(directory)) return L"";
  }
  return directory + platform::kPathSeparator + file;
}

}  // namespace logging::orlin
