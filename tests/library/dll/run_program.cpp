// SPDX-License-Identifier: MIT
#include "tests/library/dll/run_program.h"

#include <gtest/gtest.h>

namespace {

// Wine, on a machine with much to do, now and then cannot make a process and calls that an internal
// error. No program has begun then, so nothing that a test is about gets a second chance.
bool StartProgram(std::string& line, PROCESS_INFORMATION& process) {
  constexpr int kAttempts = 3;
  STARTUPINFOA startup = {};
  startup.cb = sizeof startup;
  for (int attempt = 1;; ++attempt) {
    if (CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                       &process)) {
      return true;
    }
    if (GetLastError() != ERROR_INTERNAL_ERROR || attempt == kAttempts) return false;
  }
}

}  // namespace

DWORD RunProgram(const std::string& program, const std::vector<std::string>& arguments) {
  constexpr DWORD kLimitMs = 30'000;
  char own[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, own, MAX_PATH);
  std::string line = own;
  line.resize(line.find_last_of('\\') + 1);
  line.insert(0, 1, '"');
  line.append(program).push_back('"');
  for (const std::string& argument : arguments) {
    line.push_back(' ');
    line.append(argument);
  }
  PROCESS_INFORMATION process = {};
  if (!StartProgram(line, process)) {
    ADD_FAILURE() << "cannot run the host: " << GetLastError();
    return kHung;
  }
  DWORD code = kHung;
  if (WaitForSingleObject(process.hProcess, kLimitMs) == WAIT_OBJECT_0) {
    GetExitCodeProcess(process.hProcess, &code);
  } else {
    TerminateProcess(process.hProcess, kHung);
    WaitForSingleObject(process.hProcess, kLimitMs);
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return code;
}
