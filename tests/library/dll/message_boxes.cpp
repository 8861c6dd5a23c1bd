// SPDX-License-Identifier: MIT
#include "tests/library/dll/message_boxes.h"

#include <future>
#include <utility>

#include "tests/support/eventually.h"

namespace {

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = L"";
  GetClassNameW(window, name, 64);
  return name;
}

std::wstring TextOf(HWND window) {
  wchar_t text[1024] = L"";
  GetWindowTextW(window, text, 1024);
  return text;
}

BOOL CALLBACK ReadChild(HWND child, LPARAM parameter) {
  auto& box = *reinterpret_cast<MessageBoxOnScreen*>(parameter);
  if (!IsWindowVisible(child)) return TRUE;
  if (ClassOf(child) == L"Button") {
    box.buttons.push_back(TextOf(child));
  } else {
    for (const wchar_t c : TextOf(child)) {
      if (c != L'\n' && c != L'\r') box.text += c;
    }
  }
  return TRUE;
}

BOOL CALLBACK FindBox(HWND window, LPARAM parameter) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  const bool isDialog = IsWindowVisible(window) && ClassOf(window) == L"#32770";
  // The hand controller is a dialog, too, but has no such button.
  if (process != GetCurrentProcessId() || !isDialog || GetDlgItem(window, IDOK) == nullptr) {
    return TRUE;
  }
  *reinterpret_cast<HWND*>(parameter) = window;
  return FALSE;
}

}  // namespace

std::optional<MessageBoxOnScreen> FindMessageBox() {
  HWND window = nullptr;
  EnumWindows(FindBox, reinterpret_cast<LPARAM>(&window));
  if (window == nullptr) return std::nullopt;
  MessageBoxOnScreen box = {window, TextOf(window), {}, {}};
  EnumChildWindows(window, ReadChild, reinterpret_cast<LPARAM>(&box));
  return box;
}

std::optional<MessageBoxOnScreen> WaitForMessageBox(std::chrono::milliseconds deadline) {
  std::optional<MessageBoxOnScreen> box;
  Eventually([&] { return (box = FindMessageBox()).has_value(); }, deadline);
  return box;
}

bool PressOk(const MessageBoxOnScreen& box) {
  PostMessageW(GetDlgItem(box.window, IDOK), BM_CLICK, 0, 0);
  return Eventually([&] { return !IsWindow(box.window); }, std::chrono::seconds(10));
}

int32_t AnswerBoxesDuring(std::function<int32_t()> call) {
  auto result = std::async(std::launch::async, std::move(call));
  while (result.wait_for(std::chrono::milliseconds(5)) != std::future_status::ready) {
    if (const auto box = FindMessageBox()) PressOk(*box);
  }
  return result.get();
}
