// SPDX-License-Identifier: MIT
// A locale whose decimal point is a comma.
#include "tests/framework/comma_locale.h"

#include <clocale>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "tests/support/temp_folder.h"

namespace {

#ifdef _WIN32
const char* GermanLocale() {
  return "German";
}
#else
// Made in a folder of its own, so that the machine need not have it.
const char* GermanLocale() {
  static const TempFolder folder;
  static const bool made = [] {
    const std::string target = folder.Narrow("de_DE");
    const std::string command = "localedef -i de_DE -f ISO-8859-1 '" + target + "'";
    return std::system(command.c_str()) == 0 && setenv("LOCPATH", folder.Narrow().c_str(), 1) == 0;
  }();
  return made ? "de_DE" : "";
}
#endif

}  // namespace

CommaLocale::CommaLocale() : previous_(std::setlocale(LC_ALL, nullptr)) {
  const bool set = std::setlocale(LC_ALL, GermanLocale()) != nullptr;
  if (set && std::string(std::localeconv()->decimal_point) == ",") return;
  std::setlocale(LC_ALL, previous_.c_str());
  throw std::runtime_error("no locale with a decimal comma");
}

CommaLocale::~CommaLocale() {
  std::setlocale(LC_ALL, previous_.c_str());
}
