// SPDX-License-Identifier: MIT
#include "console/error_line.h"

#include <utility>

namespace velquinctl {
namespace {

/// A word of ten thousand characters that is refused would hide what is said about it.
std::string WithoutItsMiddle(std::string text) {
  constexpr size_t kHalf = 400;
  if (text.size() <= 2 * kHalf) return text;
  const auto isInsideCharacter = [&text](size_t at) { return (text[at] & 0xC0) == 0x80; };
  size_t first = kHalf;
  while (isInsideCharacter(first)) --first;
  size_t second = text.size() - kHalf;
  while (second < text.size() && isInsideCharacter(second)) ++second;
  return text.replace(first, second - first, " ... ");
}

}  // namespace

std::string ErrorLine(std::string text) {
  text = WithoutItsMiddle(std::move(text));
  for (char& c : text) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7F') c = ' ';
  }
  return text;
}

}  // namespace velquinctl
