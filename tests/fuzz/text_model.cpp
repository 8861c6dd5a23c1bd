// SPDX-License-Identifier: MIT
#include "tests/fuzz/text_model.h"

#include <strings.h>

#include <algorithm>
#include <cctype>
#include <climits>
#include <cstdlib>
#include <cstring>

double ModelDouble(const std::string& text) {
  const char* first = text.c_str();
  while (std::isspace(static_cast<unsigned char>(*first))) ++first;
  const bool hasSign = *first == '-' || *first == '+';
  const char* digits = hasSign ? first + 1 : first;
  if (digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) return *first == '-' ? -0.0 : 0.0;
  // strtod also takes "inf" and "nan", and words that begin so.
  if (std::isalpha(static_cast<unsigned char>(digits[0]))) return 0.0;
  char* end = nullptr;
  const double number = std::strtod(first, &end);
  return end == first ? 0.0 : number;
}

int32_t ModelInt(const std::string& text) {
  const long number = std::strtol(text.c_str(), nullptr, 10);
  return static_cast<int32_t>(std::clamp<long>(number, INT_MIN, INT_MAX));
}

bool SameNumber(double a, double b) {
  return std::memcmp(&a, &b, sizeof a) == 0;
}

std::string ModelTrimmed(const std::string& text) {
  const auto isSpace = [](unsigned char c) { return std::isspace(c) != 0; };
  const auto first = std::find_if_not(text.begin(), text.end(), isSpace);
  const auto last = std::find_if_not(text.rbegin(), text.rend(), isSpace).base();
  return first < last ? std::string(first, last) : std::string();
}

std::vector<std::string> ModelFields(std::string text, const std::string& separator) {
  std::vector<std::string> fields;
  const std::string looked = separator.empty() ? "," : UpToNul(separator);
  while (!text.empty()) {
    const size_t found = UpToNul(text).find(looked);
    fields.push_back(ModelTrimmed(text.substr(0, found)));
    if (found == std::string::npos) break;
    text.erase(0, found + 1);
  }
  return fields;
}

bool ModelSame(const std::string& a, const std::string& b) {
  return strcasecmp(a.c_str(), b.c_str()) == 0;
}

std::string UpToNul(const std::string& text) {
  return text.substr(0, text.find('\0'));
}
