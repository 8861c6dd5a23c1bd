// SPDX-License-Identifier: MIT
#include "platform/text_class.h"

#include <mbctype.h>
#include <mbstring.h>

namespace platform {

bool IsMultibyteAlnum(int code) {
  return _ismbcalnum(static_cast<unsigned int>(code)) != 0;
}

int CompareTextNoCase(const char* first, const char* second) {
  return _mbsicmp(reinterpret_cast<const unsigned char*>(first),
                  reinterpret_cast<const unsigned char*>(second));
}

const char* FindText(const char* text, const char* part) {
  return reinterpret_cast<const char*>(_mbsstr(reinterpret_cast<const unsigned char*>(text),
                                               reinterpret_cast<const unsigned char*>(part)));
}

}  // namespace platform
