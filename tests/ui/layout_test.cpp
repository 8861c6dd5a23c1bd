// SPDX-License-Identifier: MIT
// The hand controller's and the detail window's templates: places in pixels, texts, styles, fonts.
#include <gtest/gtest.h>

#include <cstring>

#include "tests/ui/open_controller.h"
#include "ui/dlg_detail.h"

namespace {

using namespace ui_test;

// What a template says about a control, in dialog units.
struct Expected {
  int id;
  const wchar_t* text;
  int x, y, width, height;
  DWORD style;  // without WS_CHILD, WS_VISIBLE and what the state changes
};

constexpr DWORD kState = WS_CHILD | WS_VISIBLE | WS_DISABLED;

// The system's edit control takes its border style off when it is made, so the template is asked.
int CountOfStyle(int templateId, DWORD style) {
  HRSRC found = FindResourceA(nullptr, MAKEINTRESOURCEA(templateId), MAKEINTRESOURCEA(5));
  const auto* bytes = static_cast<const char*>(LockResource(LoadResource(nullptr, found)));
  int count = 0;
  for (DWORD at = 0; at + sizeof style <= SizeofResource(nullptr, found); at += 2)
    count += std::memcmp(bytes + at, &style, sizeof style) == 0 ? 1 : 0;
  return count;
}

std::vector<HWND> ChildrenOf(HWND dialog) {
  std::vector<HWND> children;
  for (HWND at = GetWindow(dialog, GW_CHILD); at != nullptr; at = GetWindow(at, GW_HWNDNEXT))
    children.push_back(at);
  return children;
}

void ExpectControls(HWND dialog, const std::vector<Expected>& expected) {
  const std::vector<HWND> children = ChildrenOf(dialog);
  ASSERT_EQ(children.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    const Expected& each = expected[i];
    SCOPED_TRACE(i);
    EXPECT_EQ(static_cast<short>(GetDlgCtrlID(children[i])), each.id);
    EXPECT_EQ(TextOf(children[i]), each.text);
    EXPECT_EQ(PlaceOf(children[i]),
              FromDialogUnits(dialog, each.x, each.y, each.width, each.height));
    const auto style = static_cast<DWORD>(GetWindowLongW(children[i], GWL_STYLE));
    EXPECT_EQ(style & ~kState, each.style) << std::hex << style;
  }
}

void ExpectFont(HWND dialog, const wchar_t* face, LONG weight) {
  LOGFONTW font = {};
  const auto handle = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
  ASSERT_NE(GetObjectW(handle, sizeof font, &font), 0);
  HDC screen = GetDC(nullptr);
  const int height = -MulDiv(9, GetDeviceCaps(screen, LOGPIXELSY), 72);
  ReleaseDC(nullptr, screen);
  EXPECT_STREQ(font.lfFaceName, face);
  EXPECT_EQ(font.lfHeight, height);
  EXPECT_EQ(font.lfWeight, weight);
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
