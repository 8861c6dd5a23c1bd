// SPDX-License-Identifier: MIT
// A locale whose decimal point is a comma, for tests of what must not depend on the locale.
#pragma once

#include <string>

/// The whole process has the German locale while the object lives. Throws std::runtime_error when
/// there is none; elsewhere than on Windows it is compiled by localedef at the first use.
class CommaLocale {
 public:
  CommaLocale();
  ~CommaLocale();
  CommaLocale(const CommaLocale&) = delete;
  CommaLocale& operator=(const CommaLocale&) = delete;

 private:
  std::string previous_;
};
