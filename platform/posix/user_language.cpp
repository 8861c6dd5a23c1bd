// SPDX-License-Identifier: MIT
#include "platform/user_language.h"

namespace platform {

uint32_t NarrowCodePage() {
  constexpr uint32_t kUtf8 = 65001;
  return kUtf8;
}

bool IsUserJapanese() {
  return true;
}

}  // namespace platform
