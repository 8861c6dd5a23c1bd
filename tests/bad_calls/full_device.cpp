// SPDX-License-Identifier: MIT
#include "tests/bad_calls/full_device.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "tests/support/eventually.h"
#include "tests/support/own_handles_win32.h"

namespace {

// This machine's own name of a Windows path, in UTF-8.
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

void RunShell(const std::string& script) {
  const std::string utf8 = "/bin/sh -c \"" + script + "\"";
  std::wstring command(utf8.size() + 1, L'\0');
  MultiByteToWideChar(CP_UTF8, 0, utf8.c_str(), -1, command.data(),
                      static_cast<int>(command.size()));
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  if (!CreateProcessW(L"Z:\\bin\\sh", command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                      &startup, &process)) {
    throw std::runtime_error("the shell cannot be run");
  }
  CloseHandle(process.hThread);
  CloseHandle(process.hProcess);
}

// Not by its attributes: Wine tells none of a device.
bool IsThere(const std::filesystem::path& path) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                            nullptr, OPEN_EXISTING, 0, nullptr);
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

constexpr std::chrono::seconds kSoon{20};

}  // namespace

FullDevice::FullDevice(const std::filesystem::path& folder, const std::vector<std::string>& names)
    : folder_(folder), names_(names), goThere_("cd '" + MachinePath(folder) + "' && ") {
  std::string list;
  for (const std::string& name : names) list += " '" + name + "'";
  goThere_ += "for name in" + list + "; do ";
  RunShell(goThere_ + "ln -sf /dev/full $name; done");
  if (!Eventually([this] { return AreThere(); }, kSoon)) {
    throw std::runtime_error("no link to the full device");
  }
}

// A folder with a device in it could not be deleted.
FullDevice::~FullDevice() {
  RunShell(goThere_ + "rm -f $name; done");
  Eventually([this] { return !AreThere(); }, kSoon);
}

// The last one is made, and deleted, last.
bool FullDevice::AreThere() const {
  return IsThere(folder_ / names_.back());
}

int CountOpenDevices() {
  const std::vector<HANDLE> handles = OwnHandles();
  return static_cast<int>(std::count_if(handles.begin(), handles.end(), [](HANDLE handle) {
    return GetFileType(handle) == FILE_TYPE_CHAR;
  }));
}
