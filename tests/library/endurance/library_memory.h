// SPDX-License-Identifier: MIT
// How much memory the loaded library holds, to the byte.
#pragma once

#include <cstdint>

#include "tests/support/replaced_import.h"

/// Counts what the library takes from the C heap and gives back, by standing in for malloc, calloc,
/// realloc and free in its import table. One object at a time, made before the library's first
/// session and gone before the library is unloaded.
class LibraryMemory {
 public:
  /// Throws std::runtime_error when the library is not loaded or gets its memory elsewhere.
  LibraryMemory();

  /// Since the object was made; negative when older memory has been given back. Any thread.
  static int64_t Blocks();
  static int64_t Bytes();

 private:
  const ReplacedImport malloc_, calloc_, realloc_, free_;
};
