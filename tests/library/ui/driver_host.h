// SPDX-License-Identifier: MIT
// A host with a message loop, the real library and a controller that answers.
#pragma once

#include <gmock/gmock.h>

#include <future>
#include <string>

#include "simulator/scripted_controller.h"
#include "tests/library/ui/ui_thread.h"
#include "tests/library/ui/window_tools.h"
#include "tests/support/driver_library.h"
#include "tests/support/eventually.h"
#include "tests/support/temp_folder.h"

namespace ui_test {

inline constexpr int kNorth = 3010;
inline constexpr int kSouth = 3011;
inline constexpr int kEast = 3012;
inline constexpr int kWest = 3013;
inline constexpr int kStop = 3018;
inline constexpr int kGoto = 3019;
inline constexpr int kSync = 3020;
inline constexpr int kHome = 3021;
inline constexpr int kMessageText = 10001;

class DriverHost : public testing::Test {
 protected:
  void SetUp() override {
    mount.LooksLikeAMount();
    dll.SetLogPath(nullptr, (folder.Narrow() + "\\").c_str());
  }
  void TearDown() override {
    if (DriverLibrary::IsLoaded()) {
      host.Do([&] {
        dll.Dialog(nullptr, 0);
        dll.End(nullptr);
      });
    }
    EXPECT_TRUE(OpenDialogs().empty());
  }

  void Connect() {
    int32_t started = 0;
    host.Do([&] { started = dll.Start(host.Window(), mount.Address().c_str(), nullptr, 0); });
    ASSERT_EQ(started, 1);
  }
  /// Shows the hand controller and waits until it stands.
  void OpenWindow() {
    const std::vector<HWND> others = OpenDialogs();
    host.Do([&] { dll.Dialog(host.Window(), 1); });
    window = WaitForDialogWith(kNorth, others);
    ASSERT_NE(window, nullptr);
  }
  /// Keeps the host's thread from handling messages. @return what ends that, when it is set.
  std::promise<void> KeepBusy() const {
    std::promise<void> release;
    std::promise<void> begun;
    host.Begin([&begun, done = release.get_future().share()] {
      begun.set_value();
      done.wait();
    });
    begun.get_future().wait();
    return release;
  }
  void SetTarget() {
    const double radec[2] = {83.63, 22.01};
    dll.SetPos(nullptr, radec);
  }
  bool WaitEnabled(int id, bool enabled = true) const {
    return Eventually([&] { return IsEnabled(window, id) == enabled; }, std::chrono::seconds(5));
  }
  /// Clicks a control and does not wait for what comes of it.
  void BeginClick(int id) const {
    HWND control = GetDlgItem(window, id);
    PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
  }
  /// Connects, shows the hand controller and clicks sync, which asks before it does anything.
  void RaiseSyncQuestion() {
    Connect();
    SetTarget();
    OpenWindow();
    ASSERT_TRUE(WaitEnabled(kSync));
    BeginClick(kSync);
    box = WaitForDialogWith(kMessageText);
    ASSERT_NE(box, nullptr);
  }
  /// @return whether the mount got nothing that begins so within half a second
  bool Quiet(const std::string& command) const { return !mount.WaitFor(command, 500); }

  const TempFolder folder;
  simulator::ScriptedController mount;
  DriverLibrary dll;
  const UiThread host;
  HWND window = nullptr;
  HWND box = nullptr;  // the last message box that a test waited for
};

}  // namespace ui_test
