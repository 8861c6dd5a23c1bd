// SPDX-License-Identifier: MIT
#include "platform/known_folders.h"

#include <windows.h>
// shlobj.h needs windows.h first.
#include <shlobj.h>

namespace platform {

bool LocalAppDataFolder(std::wstring& folder) {
  wchar_t path[MAX_PATH] = {};
  if (FAILED(SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, path))) {
    return false;
  }
  folder = path;
  return true;
}

}  // namespace platform
