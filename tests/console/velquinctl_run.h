// SPDX-License-Identifier: MIT
// Running velquinctl.exe as a shell does.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// What a program leaves behind.
struct ProgramResult {
  int exitCode = -1;  ///< -1 when it had to be ended because it took too long
  std::string out;    ///< UTF-8, line ends as \n
  std::string error;

  std::vector<std::string> OutLines() const;
  std::vector<std::string> ErrorLines() const;
  /// @return the first line of the output, "" when there is none.
  std::string FirstLine() const;
  /// @return its last line, "" when there is none.
  std::string LastLine() const;
};

/// One run of the velquinctl.exe that lies beside this test program. Ended at destruction if it
/// still runs.
class VelquinctlRun {
 public:
  /// Starts it. @param words arguments in UTF-8
  /// @param temporaryFolder where it finds its folder for temporary files; empty for this program's
  explicit VelquinctlRun(const std::vector<std::string>& words,
                         const std::wstring& temporaryFolder = {});
  VelquinctlRun(const VelquinctlRun&) = delete;
  VelquinctlRun& operator=(const VelquinctlRun&) = delete;
  ~VelquinctlRun();

  /// Waits for its end.
  ProgramResult Wait(std::chrono::milliseconds limit = std::chrono::seconds(40));
  /// @return what it has printed so far.
  std::string OutSoFar() const;
  /// Presses Ctrl-C for it. @return false when this system gives no way to.
  bool Interrupt();

 private:
  struct Process;
  std::unique_ptr<Process> process_;
};

/// Starts velquinctl and waits for its end.
ProgramResult RunVelquinctl(const std::vector<std::string>& words);

/// @return the folder of this test program, of velquinctl.exe and of velquin.dll.
std::filesystem::path ProgramFolder();
