// SPDX-License-Identifier: MIT
// The hand controller's and the detail window's templates: places in pixels, texts, styles, fonts.
#include <gtest/gtest.h>

#include <cstring>

#include "library/ui/dlg_detail.h"
#include "tests/library/ui/expected_controls.h"
#include "tests/library/ui/open_controller.h"

namespace {

using namespace ui_test;

// The system's edit control takes its border style off when it is made, so the template is asked.
int CountOfStyle(int templateId, DWORD style) {
  HRSRC found = FindResourceA(nullptr, MAKEINTRESOURCEA(templateId), MAKEINTRESOURCEA(5));
  const auto* bytes = static_cast<const char*>(LockResource(LoadResource(nullptr, found)));
  int count = 0;
  for (DWORD at = 0; at + sizeof style <= SizeofResource(nullptr, found); at += 2)
    count += std::memcmp(bytes + at, &style, sizeof style) == 0 ? 1 : 0;
  return count;
}

DWORD WindowStyle(HWND window) {
  return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE));
}

TEST(LayoutTest, TheHandControllerLooksAsItsTemplate) {
  const OpenController controller;
  HWND window = controller.window;
  ASSERT_NE(window, nullptr);
  constexpr DWORD kButton = BS_OWNERDRAW;
  ExpectControls(window, {
                             {-1, L"", 1, 3, 59, 78, SS_BLACKFRAME},
                             {3010, L"北", 24, 9, 13, 12, kButton | WS_GROUP},
                             {3011, L"南", 24, 39, 13, 12, kButton | WS_GROUP},
                             {3012, L"東", 7, 24, 13, 12, kButton | WS_GROUP},
                             {3013, L"西", 41, 24, 13, 12, kButton | WS_GROUP},
                             {-1, L"遅", 8, 54, 8, 8, SS_LEFT},
                             {-1, L"速", 47, 54, 8, 8, SS_LEFT},
                             {1007, L"Slider1", 4, 62, 53, 14, TBS_AUTOTICKS | TBS_TOP},
                             {-1, L"", 64, 3, 40, 78, SS_BLACKFRAME},
                             {3019, L"導入", 69, 8, 30, 14, kButton},
                             {3020, L"同期", 69, 26, 30, 14, kButton},
                             {3018, L"停止", 69, 44, 30, 14, kButton | WS_GROUP},
                             {3021, L"ホーム", 69, 62, 30, 14, kButton | WS_GROUP},
                         });
  ExpectFont(window, L"ＭＳ Ｐゴシック", FW_DONTCARE);
  EXPECT_EQ(ClientOf(window), FromDialogUnits(window, 0, 0, 105, 82));
  EXPECT_EQ(WindowStyle(window) & ~(WS_CLIPSIBLINGS | DS_SETFONT | DS_3DLOOK),
            WS_POPUP | WS_VISIBLE | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME);
  EXPECT_TRUE(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
  // The template places the client area of a window with the system's frame.
  RECT place = FromDialogUnits(window, 95, 52, 0, 0);
  AdjustWindowRectEx(&place, WindowStyle(window), FALSE, WS_EX_TOOLWINDOW | WS_EX_DLGMODALFRAME);
  RECT outer = {};
  GetWindowRect(window, &outer);
  EXPECT_EQ(outer.left, place.left);
  EXPECT_EQ(outer.top, place.top);
}

TEST(LayoutTest, TheDetailWindowLooksAsItsTemplate) {
  App();
  const UiThread host;
  host.Begin([] {
    CDlgDetail detail(nullptr);
    detail.DoModal();
  });
  HWND window = WaitForDialogWith(1002);
  ASSERT_NE(window, nullptr);
  constexpr DWORD kEdit = ES_READONLY | ES_AUTOHSCROLL | WS_TABSTOP;
  EXPECT_EQ(CountOfStyle(1000, kEdit | WS_BORDER | WS_CHILD | WS_VISIBLE), 3);
  ExpectControls(window, {
                             {1002, L"", 3, 7, 143, 14, kEdit},
                             {1003, L"", 3, 27, 173, 14, kEdit},
                             {1004, L"", 3, 45, 143, 14, kEdit},
                             {8, L"閉じる(&C)", 126, 65, 50, 14, BS_OWNERDRAW | WS_GROUP},
                         });
  ExpectFont(window, L"ＭＳ Ｐゴシック", FW_DONTCARE);
  EXPECT_EQ(TextOf(window), L"詳細");
  EXPECT_EQ(ClientOf(window), FromDialogUnits(window, 0, 0, 179, 82));
  EXPECT_EQ(WindowStyle(window) & (WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME),
            WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME);
  PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(WaitUntilGone(window));
}

TEST(LayoutTest, TheMessageBoxHasItsOwnFont) {
  App();
  const UiThread host;
  host.Begin([] { App().DoMessageBox("text", MB_OK, 0); });
  HWND window = WaitForDialogWith(10001);
  ASSERT_NE(window, nullptr);
  ExpectFont(window, L"MS UI Gothic", FW_NORMAL);
  PostMessageW(window, WM_COMMAND, IDOK, 0);
  EXPECT_TRUE(WaitUntilGone(window));
}

}  // namespace
