// SPDX-License-Identifier: MIT
#include "platform/ini_file.h"

#include <windows.h>

#include <cstring>
#include <cwchar>
#include <string>

namespace platform {
namespace {

// The profile calls accept paths of MAX_PATH characters, including the Windows folder in front of a
// bare name. Not every system checks the length before it copies a longer one into its buffer.
bool FitsAPath(const char* file) {
  std::wstring path(std::strlen(file) + 1, L'\0');
  const int room = static_cast<int>(path.size());
  const int length = MultiByteToWideChar(CP_ACP, 0, file, -1, path.data(), room);
  const bool isBareName = std::wcspbrk(path.c_str(), L"\\/:") == nullptr;
  const UINT folder = isBareName ? GetWindowsDirectoryW(nullptr, 0) : 0;
  return length > 0 && static_cast<UINT>(length) + folder <= MAX_PATH;
}

}  // namespace

void ReadIniText(const char* file, const char* section, const char* key, const char* fallback,
                 char* buffer, size_t size) {
  // Without a file there is no section, and the fallback is copied as usual.
  const char* known = FitsAPath(file) ? file : "";
  GetPrivateProfileStringA(section, key, fallback, buffer, static_cast<DWORD>(size), known);
}

}  // namespace platform
