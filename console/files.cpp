// SPDX-License-Identifier: MIT
// Files through the wide calls of Windows, so that every name works.
#include "console/files.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "console/text_encoding.h"

namespace velquinctl {
namespace {

constexpr DWORD kLongestPath = 32768;

DWORD Attributes(const std::string& path) {
  return GetFileAttributesW(WideFromUtf8(path).c_str());
}

}  // namespace

std::string FullPath(const std::string& path) {
  std::wstring full(kLongestPath, L'\0');
  full.resize(GetFullPathNameW(WideFromUtf8(path).c_str(), kLongestPath, full.data(), nullptr));
  return Utf8FromWide(full);
}

bool IsFile(const std::string& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool IsFolder(const std::string& path) {
  const DWORD attributes = Attributes(path);
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

std::string TemporaryFolder() {
  wchar_t folder[MAX_PATH + 1] = {};
  GetTempPathW(MAX_PATH, folder);
  return Utf8FromWide(folder);
}

std::optional<std::string> FileContent(const std::string& path, size_t longest) {
  std::FILE* file = _wfopen(WideFromUtf8(path).c_str(), L"rb");
  if (file == nullptr) return {};
  std::string content;
  char block[4096];
  for (size_t count = 1; count > 0 && content.size() <= longest;) {
    count = std::fread(block, 1, std::min(sizeof block, longest + 1 - content.size()), file);
    content.append(block, count);
  }
  const bool failed = std::ferror(file) != 0;
  std::fclose(file);
  if (failed) return {};
  return content;
}

}  // namespace velquinctl
