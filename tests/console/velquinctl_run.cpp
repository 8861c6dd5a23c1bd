// SPDX-License-Identifier: MIT
// Starts velquinctl with its output going to files: nobody then waits for a daemon that inherited
// the end of a pipe.
#include "tests/console/velquinctl_run.h"

#include <windows.h>

#include <stdexcept>
#include <string_view>

#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

std::wstring Wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(text.size(), L'\0');
  wide.resize(
      static_cast<size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), size)));
  return wide;
}

/// Quotes a word so that the program finds it again: backslashes count only before a quote.
std::wstring Quoted(const std::wstring& word) {
  std::wstring quoted = L"\"";
  size_t backslashes = 0;
  for (const wchar_t c : word) {
    if (c == L'"') quoted.append(backslashes + 1, L'\\');
    backslashes = c == L'\\' ? backslashes + 1 : 0;
    quoted += c;
  }
  return quoted.append(backslashes, L'\\') + L'"';
}

HANDLE InheritableFile(const std::filesystem::path& path) {
  SECURITY_ATTRIBUTES inheritable = {sizeof inheritable, nullptr, TRUE};
  return CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS,
                     FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string WithoutCarriageEnds(std::string text) {
  for (size_t at = text.find("\r\n"); at != std::string::npos; at = text.find("\r\n", at))
    text.erase(at, 1);
  return text;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t begin = 0; begin < text.size();) {
    const size_t end = std::min(text.find('\n', begin), text.size());
    lines.push_back(text.substr(begin, end - begin));
    begin = end + 1;
  }
  return lines;
}

}  // namespace

std::vector<std::string> ProgramResult::OutLines() const {
  return Lines(out);
}
std::vector<std::string> ProgramResult::ErrorLines() const {
  return Lines(error);
}
std::string ProgramResult::FirstLine() const {
  const std::vector<std::string> lines = OutLines();
  return lines.empty() ? "" : lines.front();
}
std::string ProgramResult::LastLine() const {
  const std::vector<std::string> lines = OutLines();
  return lines.empty() ? "" : lines.back();
}

struct VelquinctlRun::Process {
  TempFolder folder;
  PROCESS_INFORMATION handles = {};

  std::string Text(const wchar_t* name) const {
    return WithoutCarriageEnds(ReadWholeFile(folder / name).value_or(""));
  }
};

VelquinctlRun::VelquinctlRun(const std::vector<std::string>& words,
                             const std::wstring& temporaryFolder)
    : process_(std::make_unique<Process>()) {
  const std::filesystem::path program = ProgramFolder() / L"velquinctl.exe";
  std::wstring commandLine = Quoted(program.wstring());
  for (const std::string& word : words) commandLine += L' ' + Quoted(Wide(word));
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = GetStdHandle(STD_INPUT_HANDLE);
  startup.hStdOutput = InheritableFile(process_->folder / L"out");
  startup.hStdError = InheritableFile(process_->folder / L"error");
  wchar_t ownFolder[MAX_PATH] = {};
  GetEnvironmentVariableW(L"TMP", ownFolder, MAX_PATH);
  if (!temporaryFolder.empty()) SetEnvironmentVariableW(L"TMP", temporaryFolder.c_str());
  const BOOL started = CreateProcessW(program.c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                                      0, nullptr, nullptr, &startup, &process_->handles);
  const DWORD error = GetLastError();
  if (!temporaryFolder.empty()) SetEnvironmentVariableW(L"TMP", ownFolder);
  CloseHandle(startup.hStdOutput);
  CloseHandle(startup.hStdError);
  if (!started) {
    throw std::runtime_error("cannot start velquinctl.exe: error " + std::to_string(error));
  }
}

VelquinctlRun::~VelquinctlRun() {
  if (WaitForSingleObject(process_->handles.hProcess, 0) == WAIT_TIMEOUT) {
    TerminateProcess(process_->handles.hProcess, 99);
    WaitForSingleObject(process_->handles.hProcess, 5000);
  }
  CloseHandle(process_->handles.hThread);
  CloseHandle(process_->handles.hProcess);
}

ProgramResult VelquinctlRun::Wait(std::chrono::milliseconds limit) {
  ProgramResult result;
  const HANDLE process = process_->handles.hProcess;
  if (WaitForSingleObject(process, static_cast<DWORD>(limit.count())) == WAIT_OBJECT_0) {
    DWORD code = 0;
    GetExitCodeProcess(process, &code);
    result.exitCode = static_cast<int>(code);
  }
  result.out = process_->Text(L"out");
  result.error = process_->Text(L"error");
  return result;
}

std::string VelquinctlRun::OutSoFar() const {
  return process_->Text(L"out");
}

bool VelquinctlRun::Interrupt() {
  // The system reports a console event by a thread in the program that begins here; its own call
  // for that needs a console, which a test run may lack. The place is the same in all processes.
  const FARPROC routine = GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "CtrlRoutine");
  if (routine == nullptr) return false;
  const HANDLE thread =
      CreateRemoteThread(process_->handles.hProcess, nullptr, 0,
                         reinterpret_cast<LPTHREAD_START_ROUTINE>(reinterpret_cast<void*>(routine)),
                         reinterpret_cast<void*>(static_cast<uintptr_t>(CTRL_C_EVENT)), 0, nullptr);
  if (thread == nullptr) return false;
  CloseHandle(thread);
  return true;
}

ProgramResult RunVelquinctl(const std::vector<std::string>& words) {
  return VelquinctlRun(words).Wait();
}

std::filesystem::path ProgramFolder() {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return std::filesystem::path(path).parent_path();
}
