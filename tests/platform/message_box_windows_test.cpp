// SPDX-License-Identifier: MIT
// The system's message box, found and answered as a person would.
#include <gtest/gtest.h>
#include <windows.h>

#include <chrono>
#include <string>
#include <thread>

#include "platform/user_notice.h"
#include "tests/support/eventually.h"

namespace {

using namespace std::chrono_literals;

// The dialog of this process; other tests may show theirs at the same time.
HWND FindBox() {
  HWND found = nullptr;
  EnumWindows(
      [](HWND window, LPARAM result) -> BOOL {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        wchar_t name[16] = {};
        GetClassNameW(window, name, 16);
        if (process != GetCurrentProcessId() || std::wstring(name) != L"#32770") return TRUE;
        if (!IsWindowVisible(window)) return TRUE;
        *reinterpret_cast<HWND*>(result) = window;
        return FALSE;
      },
      reinterpret_cast<LPARAM>(&found));
  return found;
}

std::wstring TextOf(HWND window) {
  wchar_t text[256] = {};
  GetWindowTextW(window, text, 256);
  return text;
}

// The longest static text of the box is its message; the icon is a static text without one.
std::wstring MessageOf(HWND box) {
  std::wstring message;
  for (HWND child = FindWindowExW(box, nullptr, L"Static", nullptr); child != nullptr;
       child = FindWindowExW(box, child, L"Static", nullptr)) {
    if (TextOf(child).size() > message.size()) message = TextOf(child);
  }
  return message;
}

// Shows a box on a thread of its own and answers it.
class MessageBoxOfTheSystem : public testing::Test {
 protected:
  void Show(const char* text, const char* title, uint32_t type) {
    shower = std::thread([=, this] { answer = platform::ShowMessageBox(text, title, type); });
    ASSERT_TRUE(Eventually([&] { return (box = FindBox()) != nullptr; }, 10s)) << "no box";
  }
  int Press(int button) {
    PostMessageW(box, WM_COMMAND, static_cast<WPARAM>(button), 0);
    shower.join();
    return answer;
  }
  ~MessageBoxOfTheSystem() override {
    if (shower.joinable()) shower.detach();
  }

  std::thread shower;
  HWND box = nullptr;
  int answer = 0;
};

}  // namespace

TEST_F(MessageBoxOfTheSystem, HasTitleTextAndOneButton) {
  // "Tentai" and "sokai" in code page 932; the second byte of the first is no ASCII, that of the
  // katakana is a backslash.
  Show("\x93\x56\x91\xCC \x83\x5C", "\x83\x5C VELQUIN", MB_OK);
  EXPECT_EQ(TextOf(box), L"ソ VELQUIN");
  EXPECT_EQ(MessageOf(box), L"天体 ソ");
  EXPECT_NE(GetDlgItem(box, IDOK), nullptr);
  EXPECT_EQ(GetDlgItem(box, IDCANCEL), nullptr);
  EXPECT_EQ(Press(IDOK), 1);
}

TEST_F(MessageBoxOfTheSystem, GivesThePressedButton) {
  Show("really?", "VELQUIN", MB_YESNO);
  EXPECT_NE(GetDlgItem(box, IDYES), nullptr);
  EXPECT_NE(GetDlgItem(box, IDNO), nullptr);
  EXPECT_EQ(Press(IDNO), 7);
  EXPECT_TRUE(Eventually([] { return FindBox() == nullptr; }, 5s));
}
