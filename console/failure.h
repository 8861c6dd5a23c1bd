// SPDX-License-Identifier: MIT
// The one exception of velquinctl: a command ends with a line for standard error and an exit code.
#pragma once

#include <stdexcept>
#include <string>

#include "console/exit_codes.h"

namespace velquinctl {

/// Thrown by whatever cannot go on, caught where the exit code is made.
class Failure : public std::runtime_error {
 public:
  /// @param text one line in UTF-8, without the program's name and without a line end
  Failure(ExitCode code, const std::string& text) : std::runtime_error(text), code_(code) {}

  ExitCode Code() const { return code_; }

 private:
  ExitCode code_;
};

}  // namespace velquinctl
