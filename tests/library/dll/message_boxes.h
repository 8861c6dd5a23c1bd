// SPDX-License-Identifier: MIT
// The message boxes that the library shows, found on the screen and answered as a user would.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

/// What a user sees of one box.
struct MessageBoxOnScreen {
  HWND window;
  std::wstring title;
  std::wstring text;  ///< without line breaks, which depend on the font
  std::vector<std::wstring> buttons;
};

/// @return a box of this process that is open now, or nothing. Other processes' boxes do not count.
std::optional<MessageBoxOnScreen> FindMessageBox();
/// The same, waiting for it.
std::optional<MessageBoxOnScreen> WaitForMessageBox(std::chrono::milliseconds deadline);
/// Presses the box's OK button and waits until the box is gone. @return false when it stays.
bool PressOk(const MessageBoxOnScreen& box);

/// Makes a call on a thread of its own and presses OK in every box that comes up meanwhile, so that
/// a call which asks against all expectation fails the test and does not hang it.
/// @return the call's result.
int32_t AnswerBoxesDuring(std::function<int32_t()> call);
