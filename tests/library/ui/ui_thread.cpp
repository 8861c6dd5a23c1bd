// SPDX-License-Identifier: MIT
#include "tests/library/ui/ui_thread.h"

#include <functional>
#include <future>
#include <memory>
#include <utility>

namespace {

constexpr UINT kDo = WM_APP + 1;
constexpr UINT kBegin = WM_APP + 2;
constexpr UINT kEnd = WM_APP + 3;

LRESULT CALLBACK HostProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case kDo:
      (*reinterpret_cast<const std::function<void()>*>(lParam))();
      return 0;
    case kBegin: {
      const std::unique_ptr<std::function<void()>> body(
          reinterpret_cast<std::function<void()>*>(lParam));
      (*body)();
      return 0;
    }
    case kEnd:
      DestroyWindow(window);
      PostQuitMessage(0);
      return 0;
    default:
      return DefWindowProcW(window, message, wParam, lParam);
  }
}

HWND MakeHostWindow() {
  const wchar_t name[] = L"VelquinTestHost";
  WNDCLASSW host = {};
  host.lpfnWndProc = &HostProc;
  host.hInstance = GetModuleHandleW(nullptr);
  host.lpszClassName = name;
  RegisterClassW(&host);  // fails when it is there already
  return CreateWindowExW(0, name, L"host", WS_POPUP | WS_CAPTION | WS_VISIBLE, 700, 500, 200, 100,
                         nullptr, nullptr, host.hInstance, nullptr);
}

// The thread itself.
void RunHost(std::promise<HWND>& made) {
  made.set_value(MakeHostWindow());
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
}

}  // namespace

UiThread::UiThread() {
  std::promise<HWND> made;
  std::thread host(&RunHost, std::ref(made));
  thread_.swap(host);
  window_ = made.get_future().get();
}

UiThread::~UiThread() {
  PostMessageW(window_, kEnd, 0, 0);
  thread_.join();
}

void UiThread::Do(const std::function<void()>& body) const {
  SendMessageW(window_, kDo, 0, reinterpret_cast<LPARAM>(&body));
}

void UiThread::Begin(std::function<void()> body) const {
  PostMessageW(window_, kBegin, 0,
               reinterpret_cast<LPARAM>(new std::function<void()>(std::move(body))));
}

void UiThread::HandlePosted() const {
  std::promise<void> handled;
  Begin([&handled] { handled.set_value(); });
  handled.get_future().wait();
}
