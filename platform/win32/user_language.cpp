// SPDX-License-Identifier: MIT
#include "platform/user_language.h"

#include <windows.h>

namespace platform {

uint32_t NarrowCodePage() {
  return GetACP();
}

bool IsUserJapanese() {
  return PRIMARYLANGID(GetUserDefaultUILanguage()) == LANG_JAPANESE;
}

}  // namespace platform
