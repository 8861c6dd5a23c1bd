// SPDX-License-Identifier: MIT
// Code page, buffering and words of the console.
#include "console/terminal.h"

#include <windows.h>

#include <shellapi.h>

#include <cstdio>
#include <string_view>

#include "console/text_encoding.h"

namespace velquinctl {

Terminal::Terminal() : oldCodePage_(GetConsoleOutputCP()) {
  SetConsoleOutputCP(CP_UTF8);
  // Unbuffered, a character of several bytes would reach the console in pieces and not be shown.
  std::setvbuf(stdout, nullptr, _IOFBF, 1 << 14);
  std::setvbuf(stderr, nullptr, _IOFBF, 1 << 12);
}

Terminal::~Terminal() {
  std::fflush(stdout);
  std::fflush(stderr);
  // The window is the shell's and goes on in its own code page.
  if (oldCodePage_ != 0) SetConsoleOutputCP(oldCodePage_);
}

bool Terminal::OutputIsTerminal() {
  DWORD mode = 0;
  if (GetConsoleMode(GetStdHandle(STD_OUTPUT_HANDLE), &mode) != 0) return true;
  wchar_t passedOn[8] = {};
  GetEnvironmentVariableW(L"VELQUINCTL_TERMINAL", passedOn, 8);
  return std::wstring_view(passedOn) == L"1";
}

bool Terminal::InputIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_INPUT_HANDLE), &mode) != 0;
}

bool Terminal::AskYes(const std::string& question) {
  std::fputs((question + " [y/N] ").c_str(), stderr);
  std::fflush(stderr);
  char answer[16] = {};
  if (std::fgets(answer, sizeof answer, stdin) == nullptr) return false;
  return answer[0] == 'y' || answer[0] == 'Y';
}

std::vector<std::string> Terminal::CommandLineWords() {
  int count = 0;
  wchar_t** wide = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> words;
  for (int i = 1; i < count; ++i) words.push_back(Utf8FromWide(wide[i]));
  LocalFree(wide);
  return words;
}

}  // namespace velquinctl
