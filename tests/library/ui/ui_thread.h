// SPDX-License-Identifier: MIT
// A host's thread with a window: it runs a plain message loop and does what tests ask of it, also
// while it is inside of a modal dialog.
#pragma once

#include <functional>
#include <thread>

#include "framework/win/windows_base.h"

class UiThread {
 public:
  UiThread();
  ~UiThread();
  UiThread(const UiThread&) = delete;
  UiThread& operator=(const UiThread&) = delete;

  /// Runs something there and waits until it is done.
  void Do(const std::function<void()>& body) const;
  /// Has something run there soon and does not wait.
  void Begin(std::function<void()> body) const;
  /// Waits until every message that is posted to this thread by now has been handled. Do does not:
  /// what is sent overtakes what is posted.
  void HandlePosted() const;
  /// The host's window.
  HWND Window() const { return window_; }

 private:
  HWND window_ = nullptr;
  std::thread thread_;
};
