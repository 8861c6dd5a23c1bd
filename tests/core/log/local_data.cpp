// SPDX-License-Identifier: MIT
// What the linker puts in the place of the platform's functions.
#include "tests/core/log/local_data.h"

#include "platform/files.h"
#include "platform/known_folders.h"

namespace {

LocalData* data = nullptr;

}  // namespace

LocalData::LocalData() {
  data = this;
}

LocalData::~LocalData() {
  data = nullptr;
}

namespace real {

bool CreateFolders(const std::wstring& folder) __asm__(
    "__real__ZN8platform13CreateFoldersERKNSt7__cxx1112basic_stringIwSt11char_traitsIwESaIwEEE");

}  // namespace real

namespace wrapped {

bool CreateFolders(const std::wstring& folder) __asm__(
    "__wrap__ZN8platform13CreateFoldersERKNSt7__cxx1112basic_stringIwSt11char_traitsIwESaIwEEE");
bool CreateFolders(const std::wstring& folder) {
  return data != nullptr && data->takesFolders && real::CreateFolders(folder);
}

// Without an object there is no folder: no test may write into the real one.
bool LocalAppDataFolder(std::wstring& folder) __asm__(
    "__wrap__ZN8platform18LocalAppDataFolderERNSt7__cxx1112basic_stringIwSt11char_"
    "traitsIwESaIwEEE");
bool LocalAppDataFolder(std::wstring& folder) {
  if (data == nullptr || !data->known) return false;
  folder = data->folder.Wide();
  return true;
}

}  // namespace wrapped
