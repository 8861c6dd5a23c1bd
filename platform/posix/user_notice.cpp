// SPDX-License-Identifier: MIT
#include "platform/user_notice.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace platform {
namespace {

struct TableString {
  uint32_t id;
  const char* text;
};

const TableString stringTable[] = {
#define VELQUIN_STRING(id, text) {id, text},
#include "res/strings.inc"
#include "res/strings_english.inc"
#undef VELQUIN_STRING
};

}  // namespace

int ShowMessageBox(const char* text, const char* title, uint32_t) {
  std::fprintf(stderr, "%s: %s\n", title, text);
  return 1;
}

void* ShowBusyPointer() {
  return nullptr;
}

void RestorePointer(void*) {}

int LoadStringResource(uint32_t id, char* buffer, size_t size) {
  if (size == 0) return 0;
  buffer[0] = '\0';
  for (const TableString& entry : stringTable) {
    if (entry.id != id) continue;
    const size_t count = std::min(std::strlen(entry.text), size - 1);
    std::memcpy(buffer, entry.text, count);
    buffer[count] = '\0';
    return static_cast<int>(count);
  }
  return 0;
}

}  // namespace platform
