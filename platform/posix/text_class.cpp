// SPDX-License-Identifier: MIT
#include "platform/text_class.h"

#include <strings.h>

#include <cstring>

namespace platform {

bool IsMultibyteAlnum(int code) {
  return (code >= '0' && code <= '9') || (code >= 'A' && code <= 'Z') ||
         (code >= 'a' && code <= 'z');
}

// Texts are UTF-8 here: no byte of one character looks like another character.
int CompareTextNoCase(const char* first, const char* second) {
  return strcasecmp(first, second);
}

const char* FindText(const char* text, const char* part) {
  return std::strstr(text, part);
}

}  // namespace platform
