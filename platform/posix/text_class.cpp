// SPDX-License-Identifier: MIT
#include "platform/text_class.h"

namespace platform {

bool IsMultibyteAlnum(int code) {
  return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
         (code >= 'a' && code <= 'z');
}

}  // namespace platform
