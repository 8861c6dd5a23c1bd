// SPDX-License-Identifier: MIT
// Looks at a string the way a host compiled against the documented library does: as bytes.
#pragma once

#include <cstdint>
#include <cstring>

#include "framework/base/cstring.h"

/// @return the pointer that is the string object
inline const char* TextPointer(const CString& string) {
  const char* text;
  std::memcpy(&text, static_cast<const void*>(&string), sizeof text);
  return text;
}

/// The 24 bytes in front of a text.
struct StringHeader {
  void* manager;
  int32_t length;
  int32_t room;
  int32_t owners;
};

inline StringHeader HeaderOf(const CString& string) {
  const char* header = TextPointer(string) - 24;
  StringHeader result;
  std::memcpy(&result.manager, header, 8);
  std::memcpy(&result.length, header + 8, 4);
  std::memcpy(&result.room, header + 12, 4);
  std::memcpy(&result.owners, header + 16, 4);
  return result;
}
