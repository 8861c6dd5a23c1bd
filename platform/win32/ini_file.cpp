// SPDX-License-Identifier: MIT
#include "platform/ini_file.h"

#include <windows.h>

namespace platform {

void ReadIniText(const char* file, const char* section, const char* key, const char* fallback,
                 char* buffer, size_t size) {
  GetPrivateProfileStringA(section, key, fallback, buffer, static_cast<DWORD>(size), file);
}

}  // namespace platform
