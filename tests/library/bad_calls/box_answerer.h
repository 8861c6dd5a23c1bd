// SPDX-License-Identifier: MIT
// Somebody who sits in front of the screen and presses OK in every message box of the driver.
#pragma once

#include <atomic>
#include <chrono>
#include <thread>

#include "tests/library/dll/message_boxes.h"

class BoxAnswerer {
 public:
  /// Looks once itself: under Wine a process must not make its first call about windows on one
  /// thread while another loads a library. The one prepares the windows and waits for the loader,
  /// which the other holds and waits for the windows, for ever.
  BoxAnswerer() {
    FindMessageBox();
    thread_ = std::thread([this] { Run(); });
  }
  ~BoxAnswerer() {
    stopping_ = true;
    thread_.join();
  }
  BoxAnswerer(const BoxAnswerer&) = delete;
  BoxAnswerer& operator=(const BoxAnswerer&) = delete;

  int Answered() const { return answered_; }

 private:
  void Run() {
    while (!stopping_) {
      const auto box = FindMessageBox();
      if (box && PressOk(*box)) ++answered_;
      std::this_thread::sleep_for(std::chrono::milliseconds(25));
    }
  }

  std::atomic<bool> stopping_ = false;
  std::atomic<int> answered_ = 0;
  std::thread thread_;
};
