// SPDX-License-Identifier: MIT
// One message box of the library, open on a thread of its own as the worker's boxes are.
#pragma once

#include <future>
#include <string>

#include "framework/base/message_box.h"
#include "tests/library/ui/app_environment.h"
#include "tests/library/ui/window_tools.h"

namespace ui_test {

class BoxRun {
 public:
  /// Opens it. @param text narrow @param type the system's style bits
  BoxRun(const std::string& text, UINT type) {
    App();
    const std::vector<HWND> others = OpenDialogs();
    answer_ =
        std::async(std::launch::async, [text, type] { return AfxMessageBox(text.c_str(), type); });
    window_ = WaitForDialogWith(10001, others);
  }
  /// Closes it when it is still open.
  ~BoxRun() {
    if (answer_.valid()) Press(IDCANCEL);
  }
  BoxRun(const BoxRun&) = delete;
  BoxRun& operator=(const BoxRun&) = delete;

  HWND Window() const { return window_; }
  /// Clicks a button. @return what the box answered.
  int Press(int button) {
    PostMessageW(window_, WM_COMMAND, static_cast<WPARAM>(button), 0);
    return answer_.get();
  }
  /// Presses a key in the control that has the focus. @return what the box answered.
  int PressKeyInFocus(int key) {
    PressKey(Focus(), key);
    return answer_.get();
  }
  /// @return what the box answers when it ends by itself.
  int Answer() { return answer_.get(); }
  /// Moves the focus to one of its controls.
  void SetFocusTo(int id) const {
    SendMessageW(window_, WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(GetDlgItem(window_, id)), TRUE);
  }
  /// Clicks with the mouse's messages. @return what the box answered.
  int ClickOn(int button) {
    HWND control = GetDlgItem(window_, button);
    PostMessageW(control, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(3, 3));
    PostMessageW(control, WM_LBUTTONUP, 0, MAKELPARAM(3, 3));
    return answer_.get();
  }
  HWND Focus() const {
    GUITHREADINFO info = {};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(GetWindowThreadProcessId(window_, nullptr), &info);
    return info.hwndFocus;
  }

 private:
  std::future<int> answer_;
  HWND window_ = nullptr;
};

}  // namespace ui_test
