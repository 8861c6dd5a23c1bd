// SPDX-License-Identifier: MIT
#include "tests/library/bad_calls/full_device.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "tests/library/bad_calls/machine_shell.h"
#include "tests/support/eventually.h"
#include "tests/support/own_handles_win32.h"

namespace {

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
  if (!StartShell(goThere_ + "ln -sf /dev/full $name; done") ||
      !Eventually([this] { return AreThere(); }, kSoon)) {
    throw std::runtime_error("no link to the full device");
  }
}

// A folder with a device in it could not be deleted.
FullDevice::~FullDevice() {
  if (StartShell(goThere_ + "rm -f $name; done")) Eventually([this] { return !AreThere(); }, kSoon);
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
