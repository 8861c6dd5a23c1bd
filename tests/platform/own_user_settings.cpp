// SPDX-License-Identifier: MIT
// Settings of a user who exists for one test only.
#include "tests/platform/own_user_settings.h"

#ifdef _WIN32

#include <windows.h>

#include <stdexcept>

namespace {

void Demand(LSTATUS status, const char* what) {
  if (status != ERROR_SUCCESS) {
    throw std::runtime_error(std::string(what) + ": error " + std::to_string(status));
  }
}

HKEY CreateKey(const std::string& name) {
  HKEY key = nullptr;
  Demand(RegCreateKeyExA(HKEY_CURRENT_USER, name.c_str(), 0, nullptr, REG_OPTION_VOLATILE,
                         KEY_ALL_ACCESS, nullptr, &key, nullptr),
         "RegCreateKeyEx");
  return key;
}

}  // namespace

OwnUserSettings::OwnUserSettings()
    : rootKeyName_("Software\\velquin-test-" + std::to_string(GetCurrentProcessId())) {
  // A killed run with the same process number may have left some.
  RegDeleteTreeA(HKEY_CURRENT_USER, rootKeyName_.c_str());
  const HKEY key = CreateKey(rootKeyName_);
  rootKey_ = key;
  Demand(RegOverridePredefKey(HKEY_CURRENT_USER, key), "RegOverridePredefKey");
}

OwnUserSettings::~OwnUserSettings() {
  RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
  RegCloseKey(static_cast<HKEY>(rootKey_));
  RegDeleteTreeA(HKEY_CURRENT_USER, rootKeyName_.c_str());
}

void OwnUserSettings::SetText(const std::string& key, const std::string& value,
                              const std::string& text) {
  SetBytes(key, value, REG_SZ, text + '\0');
}

void OwnUserSettings::SetBytes(const std::string& key, const std::string& value, unsigned type,
                               const std::string& bytes) {
  const HKEY opened = CreateKey(key);
  Demand(RegSetValueExA(opened, value.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                        static_cast<DWORD>(bytes.size())),
         "RegSetValueEx");
  RegCloseKey(opened);
}

#else

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "tests/support/file_text.h"

OwnUserSettings::OwnUserSettings() {
  setenv("XDG_CONFIG_HOME", folder_.Narrow().c_str(), 1);
}

// The settings of whoever runs the tests are of no interest to the next test either.
OwnUserSettings::~OwnUserSettings() {
  unsetenv("XDG_CONFIG_HOME");
}

void OwnUserSettings::SetText(const std::string& key, const std::string& value,
                              const std::string& text) {
  SetBytes(key, value, 0, text);
}

void OwnUserSettings::SetBytes(const std::string& key, const std::string& value, unsigned,
                               const std::string& bytes) {
  std::string folders = key;
  std::replace(folders.begin(), folders.end(), '\\', '/');
  std::filesystem::create_directories(folder_ / folders);
  WriteWholeFile(folder_ / folders / value, bytes);
}

#endif
