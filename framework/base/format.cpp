// SPDX-License-Identifier: MIT
#include "framework/base/format.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstring>
#include <string>

#include "framework/base/cstring.h"

namespace {

// The longest double ("%f" of the largest one) has 309 digits before the point.
constexpr size_t kNumberRoom = 512;

// One conversion of a format, for example "%-8.3f", up to its letter.
struct Conversion {
  char text[32];
  char letter;
};

const char* ParseConversion(const char* percent, Conversion& conversion) {
  size_t length = 1 + std::strspn(percent + 1, "-+ #0123456789.");
  length = length < sizeof conversion.text - 2 ? length : sizeof conversion.text - 2;
  conversion.letter = percent[length];
  std::memcpy(conversion.text, percent, length);
  conversion.text[length] = conversion.letter;
  conversion.text[length + 1] = '\0';
  return conversion.letter == '\0' ? percent + length : percent + length + 1;
}

// The compiler checks the pieces of a format where Format is called.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"

template <typename Value>
void AppendNumber(CString& target, const Conversion& conversion, Value value) {
  char number[kNumberRoom];
  const int length = std::snprintf(number, sizeof number, conversion.text, value);
  if (length < 0) return;
  target.Append(number, std::min(length, static_cast<int>(sizeof number) - 1));
}

void AppendText(CString& target, const Conversion& conversion, const char* text) {
  if (text == nullptr) text = "(null)";
  if (std::strcmp(conversion.text, "%s") == 0) {
    target.Append(text, static_cast<int>(std::strlen(text)));
    return;
  }
  std::string padded(std::strlen(text) + kNumberRoom, '\0');
  const int length = std::snprintf(padded.data(), padded.size(), conversion.text, text);
  target.Append(padded.data(), std::min(length, static_cast<int>(padded.size()) - 1));
}

void AppendDouble(CString& target, const Conversion& conversion, double value) {
  char number[kNumberRoom];
  int length = std::snprintf(number, sizeof number, conversion.text, value);
  if (length < 0) return;
  length = std::min(length, static_cast<int>(sizeof number) - 1);
  const char* point = std::localeconv()->decimal_point;
  const char* found = std::strcmp(point, ".") == 0 ? nullptr : std::strstr(number, point);
  if (found == nullptr) {
    target.Append(number, length);
    return;
  }
  target.Append(number, static_cast<int>(found - number));
  target += ".";
  target += found + std::strlen(point);
}

#pragma GCC diagnostic pop

}  // namespace

void AppendFormatted(CString& target, const char* format, va_list arguments) {
  while (*format != '\0') {
    const size_t plain = std::strcspn(format, "%");
    target.Append(format, static_cast<int>(plain));
    format += plain;
    if (*format == '\0') return;
    Conversion conversion;
    format = ParseConversion(format, conversion);
    switch (conversion.letter) {
      case 'd':
      case 'i':
      case 'c':
        AppendNumber(target, conversion, va_arg(arguments, int));
        break;
      case 'u':
      case 'x':
        AppendNumber(target, conversion, va_arg(arguments, unsigned int));
        break;
      case 'e':
      case 'f':
      case 'g':
        AppendDouble(target, conversion, va_arg(arguments, double));
        break;
      case 's':
        AppendText(target, conversion, va_arg(arguments, const char*));
        break;
      default:
        target += "%";
        break;
    }
  }
}
