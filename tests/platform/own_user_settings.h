// SPDX-License-Identifier: MIT
// Settings of a user who exists for one test only, so that tests neither disturb the real user nor
// each other.
#pragma once

#include <string>

#include "tests/support/temp_folder.h"

/// While it lives this process sees a user without settings: on Windows HKEY_CURRENT_USER is a key
/// of its own below the real one, elsewhere XDG_CONFIG_HOME is a temporary folder. One at a time.
class OwnUserSettings {
 public:
  OwnUserSettings();
  ~OwnUserSettings();
  OwnUserSettings(const OwnUserSettings&) = delete;
  OwnUserSettings& operator=(const OwnUserSettings&) = delete;

  /// Stores a setting as a text; on Windows of the type REG_SZ, elsewhere without NUL.
  void SetText(const std::string& key, const std::string& value, const std::string& text);
  /// Stores the bytes as they are. @param type the registry's type; elsewhere of no meaning
  void SetBytes(const std::string& key, const std::string& value, unsigned type,
                const std::string& bytes);

 private:
#ifdef _WIN32
  void* rootKey_ = nullptr;
  std::string rootKeyName_;
#else
  TempFolder folder_;
#endif
};
