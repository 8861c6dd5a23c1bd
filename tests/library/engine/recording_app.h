// SPDX-License-Identifier: MIT
// An application object that answers the driver's message boxes itself.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "framework/base/cstring.h"
#include "framework/base/win_app.h"

/// One message box as the user would have seen it.
struct ShownBox {
  std::string text;
  std::string title;
  UINT type;
  std::thread::id thread;  ///< that asked for it
};

/// Is the module's application object while it lives. Answers at once, or holds the boxes, as a
/// user does who reads them.
class RecordingApp : public CWinApp {
 public:
  /// Takes its name from the string table, as the library's own object does.
  RecordingApp() { SetCurrentHandles(); }

  int DoMessageBox(LPCSTR prompt, UINT type, UINT) override {
    std::unique_lock guard(boxesLock);
    boxes.push_back({prompt, AppName().GetString(), type, std::this_thread::get_id()});
    changed.notify_all();
    changed.wait(guard, [this] { return !holding; });
    if (throwing) throw std::bad_alloc();
    constexpr int kOk = 1;
    return kOk;
  }

  /// From now on boxes stay open until Answer.
  void Hold() {
    const std::lock_guard guard(boxesLock);
    holding = true;
  }
  /// Answers all open boxes and those to come.
  void Answer() {
    const std::lock_guard guard(boxesLock);
    holding = false;
    changed.notify_all();
  }

  /// Whether there is memory for a box.
  void HasMemory(bool has) {
    const std::lock_guard guard(boxesLock);
    throwing = !has;
  }

  std::vector<ShownBox> Boxes() {
    const std::lock_guard guard(boxesLock);
    return boxes;
  }
  /// @return false when that many boxes have not been shown by the end of the time.
  bool WaitForBoxes(size_t count, std::chrono::milliseconds deadline) {
    std::unique_lock guard(boxesLock);
    return changed.wait_for(guard, deadline, [&] { return boxes.size() >= count; });
  }

 private:
  std::mutex boxesLock;
  std::condition_variable changed;
  bool throwing = false;
  bool holding = false;  // guarded by boxesLock, like all below
  std::vector<ShownBox> boxes;
};

/// @return a text of the library's string table, in the narrow code page.
inline std::string TableText(UINT id) {
  CString text;
  text.LoadString(id);
  return text.GetString();
}
