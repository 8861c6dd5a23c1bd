// SPDX-License-Identifier: MIT
#include "tests/library/bad_calls/small_disk.h"

#include <windows.h>

#include <shlobj.h>

#include <cstdlib>

#include "tests/library/bad_calls/file_size_limit.h"
#include "tests/library/bad_calls/mounted_disk.h"

std::unique_ptr<SmallDisk> SmallDisk::OfThisProcess() {
  const char* process = std::getenv("VELQUIN_MACHINE_PROCESS");
  if (process != nullptr) return std::make_unique<FileSizeLimit>(process);
  return std::make_unique<MountedDisk>();
}

std::filesystem::path SmallDisk::Path() {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
  return folder;
}
