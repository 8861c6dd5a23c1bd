// SPDX-License-Identifier: MIT
// The user's local application-data folder, one for each test.
#pragma once

#include <filesystem>
#include <string>

#include "tests/support/temp_folder.h"

/// While it lives the driver's log lies below a temporary folder with a Japanese name instead of
/// the user's own. One at a time. CMakeLists.txt wraps the functions at link time.
class LocalData {
 public:
  LocalData();
  ~LocalData();
  LocalData(const LocalData&) = delete;
  LocalData& operator=(const LocalData&) = delete;

  bool known = true;         ///< false: the system cannot tell the folder
  bool takesFolders = true;  ///< false: no folder can be made in it
  const TempFolder folder{u8"-データ"};
};
