// SPDX-License-Identifier: MIT
// A host that leaves in one of the ways in which hosts leave. unload_test.cpp runs it and looks at
// its exit code: 0 when all went well, else the number of the step that failed; 98 after a fault.
//
// Usage: session_host WAY ADDRESS [COUNT]
#include <cstdlib>
#include <functional>
#include <map>
#include <memory>
#include <string>

#include "tests/support/driver_library.h"
#include "tests/support/fault_count.h"

namespace {

std::string address;
int count = 1;

bool WaitFor(const std::function<bool()>& condition) {
  for (int i = 0; i < 2000; ++i) {
    if (condition()) return true;
    Sleep(5);
  }
  return false;
}

bool HasPosition(const DriverLibrary& driver) {
  double radec[2];
  return driver.GetPos(nullptr, radec) == 1;
}

bool RunsSession(const DriverLibrary& driver) {
  return driver.Start(nullptr, address.c_str(), nullptr, 0) == 1 &&
         WaitFor([&] { return HasPosition(driver); });
}

BOOL CALLBACK FindOwnDialog(HWND window, LPARAM found) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == GetCurrentProcessId() && IsWindowVisible(window) && GetDlgItem(window, IDOK)) {
    *reinterpret_cast<bool*>(found) = true;
  }
  return TRUE;
}

bool HasBox() {
  bool found = false;
  EnumWindows(FindOwnDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

// An event that another program knows by its name.
struct Event {
  explicit Event(const char* name) : handle(CreateEventA(nullptr, TRUE, FALSE, name)) {}
  ~Event() { CloseHandle(handle); }
  Event(const Event&) = delete;
  Event& operator=(const Event&) = delete;

  const HANDLE handle;
};

// Frees the library under the running worker, whose code must still be there. Whoever runs this
// host is told so, and tells when the worker has gone on for long enough.
int Unload() {
  const Event unloaded("velquin_tests_unloaded");
  const Event leave("velquin_tests_leave");
  DriverLibrary driver;
  if (!RunsSession(driver)) return 1;
  driver.Unload();
  SetEvent(unloaded.handle);
  if (WaitForSingleObject(leave.handle, 10000) != WAIT_OBJECT_0) return 2;
  return DriverLibrary::IsLoaded() ? 0 : 3;
}

// Frees the library, loads it again and ends the session that went on meanwhile.
int Reload() {
  {
    const DriverLibrary driver;
    if (!RunsSession(driver)) return 1;
  }
  DriverLibrary again;
  if (!HasPosition(again)) return 2;
  if (again.Start(nullptr, address.c_str(), nullptr, 0) != 0) return 3;
  if (again.End(nullptr) != 1) return 4;
  again.Unload();
  return DriverLibrary::IsLoaded() ? 5 : 0;
}

// The library must outlive main, as it does in a host that does not care.
DriverLibrary& ForgottenLibrary() {
  return *std::make_unique<DriverLibrary>().release();
}

int Exit() {
  return RunsSession(ForgottenLibrary()) ? 0 : 1;
}

int ExitAtOnce() {
  std::exit(RunsSession(ForgottenLibrary()) ? 0 : 1);
}

int ExitDuringBox() {
  const DriverLibrary& driver = ForgottenLibrary();
  if (!RunsSession(driver)) return 1;
  driver.Look(nullptr, nullptr);
  return WaitFor(&HasBox) ? 0 : 2;
}

DWORD WINAPI StartMeanwhile(void* driver) {
  static_cast<DriverLibrary*>(driver)->Start(nullptr, address.c_str(), nullptr, 0);
  return 0;
}

// Leaves while another thread waits for a controller that does not answer.
int ExitDuringStart() {
  const HANDLE thread = CreateThread(nullptr, 0, StartMeanwhile, &ForgottenLibrary(), 0, nullptr);
  if (thread == nullptr) return 1;
  Sleep(200);  // well within the half second that the start waits
  return WaitForSingleObject(thread, 0) == WAIT_TIMEOUT ? 0 : 2;
}

int ExitWithWindow() {
  const DriverLibrary& driver = ForgottenLibrary();
  if (!RunsSession(driver)) return 1;
  return driver.Dialog(nullptr, 1) == 1 ? 0 : 2;
}

int UnloadWithWindow() {
  DriverLibrary driver;
  driver.Dialog(nullptr, 1);
  driver.Unload();
  return DriverLibrary::IsLoaded() ? 1 : 0;
}

// Sessions of a host that loads the library for each.
int Cycle() {
  for (int i = 0; i < count; ++i) {
    DriverLibrary driver;
    if (!RunsSession(driver)) return 1;
    if (driver.End(nullptr) != 1) return 2;
    driver.Unload();
    if (DriverLibrary::IsLoaded()) return 3;
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc > 2) address = argv[2];
  if (argc > 3) count = std::atoi(argv[3]);
  const std::map<std::string, int (*)()> ways = {
      {"unload", Unload},
      {"reload", Reload},
      {"exit", Exit},
      {"exit-at-once", ExitAtOnce},
      {"exit-during-box", ExitDuringBox},
      {"exit-during-start", ExitDuringStart},
      {"exit-with-window", ExitWithWindow},
      {"unload-with-window", UnloadWithWindow},
      {"cycle", Cycle},
  };
  const auto way = ways.find(argc > 1 ? argv[1] : "");
  if (way == ways.end()) return 99;
  EndAtFaults(98);
  return way->second();
}
