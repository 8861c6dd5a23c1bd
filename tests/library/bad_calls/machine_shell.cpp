// SPDX-License-Identifier: MIT
#include "tests/library/bad_calls/machine_shell.h"

#include <windows.h>

#include <stdexcept>

std::string MachinePath(const std::filesystem::path& path) {
  using Function = char*(CDECL*)(const wchar_t*);
  const auto function = reinterpret_cast<Function>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "wine_get_unix_file_name")));
  char* name = function == nullptr ? nullptr : function(path.c_str());
  if (name == nullptr) throw std::runtime_error("this is not Wine, or there is no such folder");
  const std::string result = name;
  HeapFree(GetProcessHeap(), 0, name);
  return result;
}

bool StartShell(const std::string& script) {
  const std::string utf8 = "/bin/sh -c \"" + script + "\"";
  std::wstring command(utf8.size() + 1, L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, command.data(),
                      static_cast<int>(command.size()));
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(L"Z:\\bin\\sh", command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process)) {
    return false;
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
  return true;
}
