// SPDX-License-Identifier: MIT
// Finding, reading and answering message boxes.
#include "console/message_watch.h"

#include <windows.h>

#include <chrono>
#include <condition_variable>
#include <map>
#include <mutex>
#include <thread>
#include <utility>

#include "console/text_encoding.h"

namespace velquinctl {
namespace {

constexpr auto kLookAgain = std::chrono::milliseconds(50);
constexpr auto kAnswerAgain = std::chrono::seconds(1);
constexpr UINT kReadMs = 500;

using Clock = std::chrono::steady_clock;

std::wstring ClassOf(HWND window) {
  wchar_t name[64] = {};
  GetClassNameW(window, name, 64);
  return name;
}

/// Reads a window's text; its thread may be busy, so there is a limit.
std::wstring TextOf(HWND window) {
  wchar_t text[2048] = {};
  DWORD_PTR length = 0;
  SendMessageTimeoutW(window, WM_GETTEXT, 2048, reinterpret_cast<LPARAM>(text), SMTO_ABORTIFHUNG,
                      kReadMs, &length);
  return text;
}

// The text of the driver's own boxes; the system's have another number there.
constexpr int kDriversText = 10001;

BOOL CALLBACK AppendStaticText(HWND child, LPARAM result) {
  if (ClassOf(child) == L"Static") {
    auto& text = *reinterpret_cast<std::wstring*>(result);
    const std::wstring part = TextOf(child);
    if (!part.empty()) text += (text.empty() ? L"" : L" ") + part;
  }
  return TRUE;
}

std::wstring RawText(HWND box) {
  if (HWND control = GetDlgItem(box, kDriversText); control != nullptr) return TextOf(control);
  std::wstring text;
  EnumChildWindows(box, AppendStaticText, reinterpret_cast<LPARAM>(&text));
  return text;
}

/// @return all that the box says, on one line.
std::string BoxText(HWND box) {
  std::wstring line;
  for (const wchar_t c : RawText(box)) {
    if (c == L'\r') continue;
    line += c == L'\n' || c == L'\t' ? L' ' : c;
  }
  line.erase(line.find_last_not_of(L' ') + 1);  // the driver ends every line of a text
  return Utf8FromWide(line);
}

/// A message box has an OK button; the driver's other windows have none.
BOOL CALLBACK AppendBox(HWND window, LPARAM result) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  if (process == GetCurrentProcessId() && IsWindowVisible(window) && ClassOf(window) == L"#32770" &&
      GetDlgItem(window, IDOK) != nullptr)
    reinterpret_cast<std::vector<HWND>*>(result)->push_back(window);
  return TRUE;
}

}  // namespace

struct MessageWatch::Watcher {
  Watcher() : thread([this] { Run(); }) {}

  ~Watcher() {
    {
      const std::lock_guard guard(lock);
      ending = true;
    }
    wake.notify_all();
    thread.join();
  }

  void Run() {
    std::unique_lock guard(lock);
    while (!wake.wait_for(guard, kLookAgain, [this] { return ending; })) {
      if (!answering) continue;
      guard.unlock();
      AnswerBoxes();
      guard.lock();
    }
  }

  void AnswerBoxes() {
    std::vector<HWND> boxes;
    EnumWindows(AppendBox, reinterpret_cast<LPARAM>(&boxes));
    std::map<HWND, Clock::time_point> still;
    for (HWND box : boxes) {
      const auto known = answered.find(box);
      if (known == answered.end()) {
        std::string text = BoxText(box);
        const std::lock_guard guard(lock);
        texts.push_back(std::move(text));
      }
      const bool due = known == answered.end() || Clock::now() - known->second > kAnswerAgain;
      if (due) PostMessageW(box, WM_COMMAND, IDOK, 0);
      still[box] = due ? Clock::now() : known->second;
    }
    answered.swap(still);
  }

  std::map<HWND, Clock::time_point> answered;  // the watching thread's own: when last answered

  std::mutex lock;
  std::condition_variable wake;
  bool ending = false;             // guarded by the lock
  bool answering = true;           // guarded by the lock
  std::vector<std::string> texts;  // guarded by the lock

  std::thread thread;  // last, so that it finds everything else built
};

MessageWatch::MessageWatch() {
  // The first call of this kind loads the display driver. Left to the watching thread, it can meet
  // the loading of velquin.dll on this one, and under Wine the two then wait for each other for
  // ever: one holds the loader's lock and wants the driver, the other has begun the driver and
  // wants the loader's lock.
  ReleaseDC(nullptr, GetDC(nullptr));
  watcher_ = std::make_unique<Watcher>();
}

MessageWatch::~MessageWatch() = default;

void MessageWatch::SetAnswering(bool answer) {
  const std::lock_guard guard(watcher_->lock);
  watcher_->answering = answer;
}

std::vector<std::string> MessageWatch::Take() {
  const std::lock_guard guard(watcher_->lock);
  return std::exchange(watcher_->texts, {});
}

bool MessageWatch::HasText() const {
  const std::lock_guard guard(watcher_->lock);
  return !watcher_->texts.empty();
}

}  // namespace velquinctl
