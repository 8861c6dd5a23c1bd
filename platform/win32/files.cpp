// SPDX-License-Identifier: MIT
#include "platform/files.h"

#include <share.h>
#include <windows.h>

namespace platform {

bool PathExists(const std::wstring& path) {
  return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool CreateFolders(const std::wstring& folder) {
  if (CreateDirectoryW(folder.c_str(), nullptr)) return true;
  if (GetLastError() != ERROR_PATH_NOT_FOUND) return false;
  const size_t parentEnd = folder.find_last_of(L"\\/");
  if (parentEnd == std::wstring::npos || parentEnd == 0) return false;
  const std::wstring parent = folder.substr(0, parentEnd);
  // Another process may create the parent at the same moment; it only has to exist.
  return (CreateFolders(parent) || PathExists(parent)) && CreateDirectoryW(folder.c_str(), nullptr);
}

std::FILE* OpenSharedTextFile(const std::wstring& path) {
  return _wfsopen(path.c_str(), L"wt", _SH_DENYNO);
}

}  // namespace platform
