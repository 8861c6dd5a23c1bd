// SPDX-License-Identifier: MIT
#include "platform/text_class.h"

#include <cstring>
// After the C++ headers: these two break C++ headers that follow them.
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

// Not _mbsstr: under Wine it also finds second bytes.
const char* FindText(const char* text, const char* part) {
  const size_t length = std::strlen(part);
  while (*text != '\0') {
    if (std::strncmp(text, part, length) == 0) return text;
    text += _ismbblead(static_cast<unsigned char>(text[0])) && text[1] != '\0' ? 2 : 1;
  }
  return length == 0 ? text : nullptr;
}

}  // namespace platform
