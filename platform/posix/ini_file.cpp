// SPDX-License-Identifier: MIT
#include "platform/ini_file.h"

#include <strings.h>

#include <algorithm>
#include <cstring>
#include <fstream>
#include <string>

namespace platform {
namespace {

std::string Trimmed(const std::string& text) {
  const char* const blanks = " \t\r\n";
  const size_t first = text.find_first_not_of(blanks);
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool SameName(const std::string& a, const char* b) {
  return strcasecmp(a.c_str(), b) == 0;
}

std::string WithoutQuotes(const std::string& value) {
  const bool quoted =
      value.size() >= 2 && (value[0] == '"' || value[0] == '\'') && value.back() == value.front();
  return quoted ? value.substr(1, value.size() - 2) : value;
}

bool FindValue(const char* file, const char* section, const char* key, std::string& value) {
  std::ifstream stream(file);
  bool inSection = false;
  for (std::string line; std::getline(stream, line);) {
    line = Trimmed(line);
    if (!line.empty() && line[0] == '[') {
      inSection = SameName(line.substr(1, line.find(']') - 1), section);
      continue;
    }
    const size_t equals = line.find('=');
    if (!inSection || equals == std::string::npos || line[0] == ';') continue;
    if (!SameName(Trimmed(line.substr(0, equals)), key)) continue;
    value = WithoutQuotes(Trimmed(line.substr(equals + 1)));
    return true;
  }
  return false;
}

}  // namespace

void ReadIniText(const char* file, const char* section, const char* key, const char* fallback,
                 char* buffer, size_t size) {
  if (size == 0) return;
  std::string value;
  if (!FindValue(file, section, key, value)) value = fallback;
  const size_t count = std::min(value.size(), size - 1);
  std::memcpy(buffer, value.data(), count);
  buffer[count] = '\0';
}

}  // namespace platform
