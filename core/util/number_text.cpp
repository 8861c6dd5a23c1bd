// SPDX-License-Identifier: MIT
#include "core/util/number_text.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <limits>
#include <system_error>

namespace {

// Skips white space and a plus sign; from_chars accepts neither.
const char* NumberStart(TextSpan text) {
  while (text.first < text.last && IsSpace(*text.first)) ++text.first;
  const bool plus = text.first < text.last && *text.first == '+';
  const bool minusFollows = text.last - text.first > 1 && text.first[1] == '-';
  return plus && !minusFollows ? text.first + 1 : text.first;
}

// The result of strtod beyond the range of a double: from_chars only reports that the number is out
// of range. The power of ten of the first non-zero digit shows whether it is too large or too
// small.
double OutOfRange(const char* first, const char* last) {
  const char* digitsEnd = std::find_if(first, last, [](char c) { return c == 'e' || c == 'E'; });
  const char* point = std::find(first, digitsEnd, '.');
  const char* leading = std::find_if(first, digitsEnd, [](char c) { return c >= '1' && c <= '9'; });
  int64_t power = point - leading - (leading < point ? 1 : 0);
  if (digitsEnd != last) power += TextToInt(TextSpan{digitsEnd + 1, last});
  const double size = power > 0 ? std::numeric_limits<double>::infinity() : 0.0;
  return *first == '-' ? -size : size;
}

TextSpan WholeText(const char* text) {
  return {text, text + std::strlen(text)};
}

}  // namespace

double TextToDouble(TextSpan text) {
  const char* first = NumberStart(text);
  // from_chars also accepts "inf" and "nan", and words that begin so; they are not numbers here.
  const char* digit = first < text.last && *first == '-' ? first + 1 : first;
  if (digit == text.last || (*digit != '.' && (*digit < '0' || *digit > '9'))) return 0.0;
  double number = 0.0;
  const auto [end, error] = std::from_chars(first, text.last, number);
  return error == std::errc::result_out_of_range ? OutOfRange(first, end) : number;
}

double TextToDouble(const char* text) {
  return TextToDouble(WholeText(text));
}

int32_t TextToInt(TextSpan text) {
  const char* first = NumberStart(text);
  int32_t number = 0;
  const auto [end, error] = std::from_chars(first, text.last, number);
  if (error != std::errc::result_out_of_range) return number;
  using Limits = std::numeric_limits<int32_t>;
  return *first == '-' ? Limits::min() : Limits::max();
}

int32_t TextToInt(const char* text) {
  return TextToInt(WholeText(text));
}
