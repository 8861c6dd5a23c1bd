// SPDX-License-Identifier: MIT
#include "util/number_text.h"

#include <charconv>
#include <cstring>
#include <limits>
#include <system_error>

namespace {

// Skips white space and a plus sign, which from_chars takes neither of.
const char* NumberStart(const char* text) {
  while (*text == ' ' || (*text >= '\t' && *text <= '\r')) ++text;
  return *text == '+' && text[1] != '-' ? text + 1 : text;
}

// What strtod answers beyond the range of a double: from_chars only says that it was so.
double OutOfRange(const char* first, const char* last) {
  const bool negative = *first == '-';
  const auto* exponent =
      static_cast<const char*>(std::memchr(first, 'e', static_cast<size_t>(last - first)));
  if (exponent == nullptr) {
    exponent = static_cast<const char*>(std::memchr(first, 'E', static_cast<size_t>(last - first)));
  }
  const bool small = exponent != nullptr ? exponent[1] == '-' : first[negative ? 1 : 0] == '0';
  const double size = small ? 0.0 : std::numeric_limits<double>::infinity();
  return negative ? -size : size;
}

}  // namespace

double TextToDouble(const char* text) {
  const char* first = NumberStart(text);
  const char* last = first + std::strlen(first);
  double number = 0.0;
  const auto [end, error] = std::from_chars(first, last, number);
  return error == std::errc::result_out_of_range ? OutOfRange(first, end) : number;
}

int32_t TextToInt(const char* text) {
  const char* first = NumberStart(text);
  const char* last = first + std::strlen(first);
  int32_t number = 0;
  const auto [end, error] = std::from_chars(first, last, number);
  if (error != std::errc::result_out_of_range) return number;
  using Limits = std::numeric_limits<int32_t>;
  return *first == '-' ? Limits::min() : Limits::max();
}
