// SPDX-License-Identifier: MIT
// A host that brings one of the driver's windows into a wanted state and keeps it there while
// scripts/screenshots takes its picture.
//
// Usage: screenshot-host SCENE ADDRESS FILE
//   SCENE    idle, held, disabled, detail, no-response, sync-question or below-horizon
//   ADDRESS  of the controller
//   FILE     gets the window's place as WIDTHxHEIGHT+X+Y; the program ends when it is deleted
#include <atomic>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include "tests/library/ui/ui_thread.h"
#include "tests/library/ui/window_tools.h"
#include "tests/support/driver_library.h"
#include "tests/support/eventually.h"
#include "tests/support/fault_count.h"
#include "tests/support/replaced_import.h"

namespace {

using namespace ui_test;
using namespace std::chrono_literals;

constexpr int kNorth = 3010;
constexpr int kSync = 3020;
constexpr int kStop = 3018;
constexpr int kDetailLine = 1002;
constexpr int kMessageText = 10001;

constexpr double kHigh[2] = {279.23, 38.78};
constexpr double kNeverUp[2] = {100.0, -89.0};

SHORT WINAPI ControlIsHeld(int key) {
  return key == VK_CONTROL ? static_cast<SHORT>(0x8000) : SHORT{0};
}

class ScreenshotHost {
 public:
  explicit ScreenshotHost(const char* newAddress) : address(newAddress) {}

  /// @return the window of the picture; null when it does not come.
  HWND Show(const std::string& scene) {
    if (scene == "no-response") {
      host.Begin([this] { Start(); });
      return WaitForDialogWith(kMessageText);
    }
    if (scene == "disabled") {
      HWND window = OpenController();
      WaitEnabled(window, kNorth, false);
      return window;
    }
    host.Do([this] { Start(); });
    if (scene == "below-horizon") {
      dll.Look(nullptr, kNeverUp);
      return WaitForDialogWith(kMessageText);
    }
    dll.SetPos(nullptr, kHigh);
    HWND window = OpenController();
    WaitEnabled(window, kSync, true);
    return ShowConnected(scene, window);
  }

 private:
  HWND ShowConnected(const std::string& scene, HWND window) const {
    if (scene == "held") {
      SendDlgItemMessageW(window, kNorth, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
      return window;
    }
    if (scene == "sync-question") {
      PostMessageW(window, WM_COMMAND, kSync, 0);
      return WaitForDialogWith(kMessageText);
    }
    if (scene == "detail") {
      ReplaceImport(GetModuleHandleW(L"velquin.dll"), "GetAsyncKeyState",
                    reinterpret_cast<void*>(&ControlIsHeld));
      PostMessageW(window, WM_COMMAND, kStop, 0);
      return WaitForDialogWith(kDetailLine);
    }
    return scene == "idle" ? window : nullptr;
  }

  void Start() const { dll.Start(nullptr, address, nullptr, 0); }
  HWND OpenController() const {
    host.Do([this] { dll.Dialog(nullptr, 1); });
    return WaitForDialogWith(kNorth);
  }
  static void WaitEnabled(HWND window, int id, bool enabled) {
    Eventually([=] { return IsEnabled(window, id) == enabled; }, 5s);
  }

  const char* address;
  DriverLibrary dll;
  const UiThread host;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) return 2;
  EndAtFaults(98);
  ScreenshotHost screenshot(argv[2]);
  HWND window = screenshot.Show(argv[1]);
  if (window == nullptr) return 1;
  // Controls that were enabled a moment ago are painted by now.
  SendMessageW(window, WM_NULL, 0, 0);
  UpdateWindow(window);
  RECT place = {};
  GetWindowRect(window, &place);
  const std::filesystem::path file = argv[3];
  std::ofstream(file) << place.right - place.left << 'x' << place.bottom - place.top << '+'
                      << place.left << '+' << place.top << '\n';
  Eventually([&] { return !std::filesystem::exists(file); }, 30s);
  std::fflush(nullptr);
  // Windows and connection end with the process.
  TerminateProcess(GetCurrentProcess(), 0);
}
