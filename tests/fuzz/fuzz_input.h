// SPDX-License-Identifier: MIT
// The bytes that a fuzzer chose, taken from the front as numbers and texts. When there are no more,
// numbers are 0 and texts empty, so that every input means something.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

class FuzzInput {
 public:
  /// @param bytes outlive the object; may be null when count is 0
  FuzzInput(const uint8_t* bytes, size_t count) : next(bytes), left(count) {}

  bool IsEmpty() const { return left == 0; }

  uint8_t Byte() {
    if (left == 0) return 0;
    --left;
    return *next++;
  }
  /// @return a number below `count`, which is 1 to 256.
  unsigned Choice(unsigned count) { return Byte() % count; }
  uint16_t Word() {
    const unsigned high = Byte();
    return static_cast<uint16_t>(high << 8 | Byte());
  }
  int32_t Int32() {
    const uint32_t high = Word();
    return static_cast<int32_t>(high << 16 | Word());
  }
  /// @return the next bytes, as many as there are at the most.
  std::string Text(size_t count) {
    const size_t taken = std::min(count, left);
    std::string text(next, next + taken);
    next += taken;
    left -= taken;
    return text;
  }
  std::string Rest() { return Text(left); }
  /// @return the bytes up to a line feed, which is taken but not returned.
  std::string Line() {
    const uint8_t* const end = std::find(next, next + left, '\n');
    std::string line = Text(static_cast<size_t>(end - next));
    Byte();
    return line;
  }

 private:
  const uint8_t* next;
  size_t left;
};
