// SPDX-License-Identifier: MIT
#include "console/journal_folder.h"

#include <windows.h>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <string_view>

#include "console/files.h"
#include "console/text_encoding.h"

namespace velquinctl {
namespace {

constexpr size_t kLongestJournal = 100'000'000;

// A deep folder may have room for a shorter name and not for the journal's.
constexpr std::string_view kJournalName = "_timeouterr_korvelwireless_20000101_000000.txt";
constexpr const char* kTrialName = "_trialwrite_korvelwireless_20000101_000000.txt";
static_assert(std::string_view(kTrialName).size() == kJournalName.size());

// Read by the thread that ends the program; there is one session at a time.
std::atomic<const wchar_t*> folderInUse = nullptr;

/// @return the first folder that can be made.
std::wstring MakeFolder() {
  static int made = 0;
  const std::wstring begin = WideFromUtf8(TemporaryFolder()) + L"velquinctl-" +
                             std::to_wstring(GetCurrentProcessId()) + L'-';
  for (int tries = 0; tries < 100; ++tries) {
    const std::wstring path = begin + std::to_wstring(++made);
    if (CreateDirectoryW(path.c_str(), nullptr)) return path + L'\\';
    if (GetLastError() != ERROR_ALREADY_EXISTS) return {};
  }
  return {};
}

/// @return the path in the code page; its short form when that lacks one of the letters.
std::string InSystemCodePage(const std::wstring& path) {
  wchar_t shorter[MAX_PATH + 1] = {};
  GetShortPathNameW(path.c_str(), shorter, MAX_PATH);
  for (const std::wstring& form : {path, std::wstring(shorter)}) {
    const auto text = NarrowFromWide(CP_ACP, form);
    if (text && !text->empty()) return *text;
  }
  return {};
}

/// Makes and fills a file by the same narrow call and with a name of the same length as the driver.
/// @param folder in the system's code page, with a separator at its end
/// @return whether that can be done
bool CanBeWritten(const std::string& folder) {
  const std::string path = folder + JournalFolder::kPrefix + kTrialName;
  std::FILE* const file = std::fopen(path.c_str(), "w");
  if (file == nullptr) return false;
  char block[4096];
  std::memset(block, '.', sizeof block);
  const bool filled = std::fwrite(block, sizeof block, 1, file) == 1;
  const bool kept = std::fclose(file) == 0;
  DeleteFileA(path.c_str());
  return filled && kept;
}

}  // namespace

void RemoveFolderAtOnce(const wchar_t* path) {
  WIN32_FIND_DATAW found;
  const std::wstring folder = path;
  HANDLE search = FindFirstFileW((folder + L'*').c_str(), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      DeleteFileW((folder + found.cFileName).c_str());
    } while (FindNextFileW(search, &found));
    FindClose(search);
  }
  RemoveDirectoryW(folder.c_str());
}

const wchar_t* JournalFolderInUse() {
  return folderInUse;
}

JournalFolder::JournalFolder() : path_(MakeFolder()) {
  if (path_.empty()) return;
  systemPath_ = InSystemCodePage(path_);
  folderInUse = path_.c_str();
}

JournalFolder::~JournalFolder() {
  if (path_.empty()) return;
  folderInUse = nullptr;
  RemoveFolderAtOnce(path_.c_str());
}

std::wstring JournalFolder::NewestFile() const {
  // The names end with date and time, so the newest is the last.
  std::wstring newest;
  WIN32_FIND_DATAW found;
  HANDLE search =
      FindFirstFileW((path_ + WideFromUtf8(kPrefix) + L"_timeouterr*.txt").c_str(), &found);
  if (search == INVALID_HANDLE_VALUE) return newest;
  do {
    if (newest < found.cFileName) newest = found.cFileName;
  } while (FindNextFileW(search, &found));
  FindClose(search);
  return newest;
}

std::optional<std::string> JournalFolder::Read() const {
  if (systemPath_.empty()) return {};
  const std::wstring name = NewestFile();
  if (name.empty())
    return CanBeWritten(systemPath_) ? std::optional<std::string>("") : std::nullopt;
  auto content = FileContent(Utf8FromWide(path_ + name), kLongestJournal);
  // The driver makes no empty file: what it had to write found no room.
  if (content && (content->empty() || content->size() > kLongestJournal)) return {};
  return content;
}

bool JournalFolder::CopyTo(const std::string& folder, const std::string& prefix) const {
  const std::wstring name = NewestFile();
  if (name.empty()) return true;
  std::wstring target = WideFromUtf8(folder);
  if (!target.ends_with(L'\\') && !target.ends_with(L'/')) target += L'\\';
  target += WideFromUtf8(prefix) + name.substr(std::strlen(kPrefix));
  // Two sessions may end within the second of the name: the file of the first stays.
  const std::wstring stem = target.substr(0, target.size() - 4);
  for (int i = 2; GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES && i < 1000; ++i)
    target = stem + L'_' + std::to_wstring(i) + L".txt";
  return CopyFileW((path_ + name).c_str(), target.c_str(), TRUE) != FALSE;
}

}  // namespace velquinctl
