// SPDX-License-Identifier: MIT
// The console window around the program.
#pragma once

#include <string>
#include <vector>

namespace velquinctl {

/// Makes the console show UTF-8 for as long as the object lives. Owned by main.
class Terminal {
 public:
  Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal();

  /// @return whether standard output is a console window and not a pipe or a file. A program that
  ///         passes the output on to a terminal sets VELQUINCTL_TERMINAL=1 in the environment.
  static bool OutputIsTerminal();

  /// @return whether somebody can answer a question at standard input.
  static bool InputIsTerminal();
  /// Asks on standard error and waits for a line. @return whether it begins with y or Y.
  static bool AskYes(const std::string& question);

  /// @return the words after the program's name, UTF-8.
  static std::vector<std::string> CommandLineWords();

 private:
  unsigned oldCodePage_;
};

}  // namespace velquinctl
