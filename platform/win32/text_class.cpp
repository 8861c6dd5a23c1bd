// SPDX-License-Identifier: MIT
#include "platform/text_class.h"

#include <mbctype.h>
#include <mbstring.h>

namespace platform {

bool IsMultibyteAlnum(int code) {
  return _ismbcalnum(static_cast<unsigned int>(code)) != 0;
}

}  // namespace platform
