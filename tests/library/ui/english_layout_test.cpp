// SPDX-License-Identifier: MIT
// The English templates: the controls of the Japanese ones at the same places, with English texts.
#include <gtest/gtest.h>

#include "framework/base/text_language.h"
#include "library/ui/dlg_detail.h"
#include "tests/library/ui/box_run.h"
#include "tests/library/ui/expected_controls.h"
#include "tests/library/ui/open_controller.h"

namespace {

using namespace ui_test;

DWORD WindowStyle(HWND window) {
  constexpr DWORD kOfTheSystem = WS_CLIPSIBLINGS | DS_SETFONT | DS_3DLOOK | WS_VISIBLE;
  return static_cast<DWORD>(GetWindowLongW(window, GWL_STYLE)) & ~kOfTheSystem;
}

constexpr DWORD kDialogStyle = WS_POPUP | WS_CAPTION | WS_SYSMENU | DS_MODALFRAME;

TEST(EnglishLayout, BelongsToASystemThatCannotShowJapanese) {
  ASSERT_EQ(GetACP(), 1252u) << "these tests run on an English system";
  EXPECT_EQ(DotsPerInch(), 96) << "left behind by a killed run, and taken back now: run this again";
  EXPECT_EQ(AfxTextLanguage(), TextLanguage::kEnglish);
}

TEST(EnglishLayout, TheHandControllerLooksAsItsTemplate) {
  const OpenController controller;
  HWND window = controller.window;
  ASSERT_NE(window, nullptr);
  constexpr DWORD kButton = BS_OWNERDRAW;
  ExpectControls(window, {
                             {-1, L"", 1, 3, 59, 78, SS_BLACKFRAME},
                             {3010, L"N", 24, 9, 13, 12, kButton | WS_GROUP},
                             {3011, L"S", 24, 39, 13, 12, kButton | WS_GROUP},
                             {3012, L"E", 7, 24, 13, 12, kButton | WS_GROUP},
                             {3013, L"W", 41, 24, 13, 12, kButton | WS_GROUP},
                             {-1, L"Slow", 8, 54, 22, 8, SS_LEFT},
                             {-1, L"Fast", 33, 54, 22, 8, SS_RIGHT},
                             {1007, L"Slider1", 4, 62, 53, 14, TBS_AUTOTICKS | TBS_TOP},
                             {-1, L"", 64, 3, 40, 78, SS_BLACKFRAME},
                             {3019, L"Goto", 69, 8, 30, 14, kButton},
                             {3020, L"Sync", 69, 26, 30, 14, kButton},
                             {3018, L"Stop", 69, 44, 30, 14, kButton | WS_GROUP},
                             {3021, L"Home", 69, 62, 30, 14, kButton | WS_GROUP},
                         });
  ExpectFont(window, L"MS Shell Dlg", FW_DONTCARE);
  EXPECT_EQ(TextOf(window), L"VELQUIN");
  EXPECT_EQ(ClientOf(window), FromDialogUnits(window, 0, 0, 105, 82));
  EXPECT_EQ(WindowStyle(window), kDialogStyle);
  EXPECT_TRUE(GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOOLWINDOW);
}

TEST(EnglishLayout, TheDetailWindowLooksAsItsTemplate) {
  App();
  const UiThread host;
  host.Begin([] {
    CDlgDetail detail(nullptr);
    detail.DoModal();
  });
  HWND window = WaitForDialogWith(1002);
  ASSERT_NE(window, nullptr);
  constexpr DWORD kEdit = ES_READONLY | ES_AUTOHSCROLL | WS_TABSTOP;
  ExpectControls(window, {
                             {1002, L"", 3, 7, 143, 14, kEdit},
                             {1003, L"", 3, 27, 173, 14, kEdit},
                             {1004, L"", 3, 45, 143, 14, kEdit},
                             {8, L"&Close", 126, 65, 50, 14, BS_OWNERDRAW | WS_GROUP},
                         });
  ExpectFont(window, L"MS Shell Dlg", FW_DONTCARE);
  EXPECT_EQ(TextOf(window), L"Details");
  EXPECT_EQ(ClientOf(window), FromDialogUnits(window, 0, 0, 179, 82));
  EXPECT_EQ(WindowStyle(window), kDialogStyle);
  PostMessageW(window, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(WaitUntilGone(window));
}

// A type that the box does not know leaves all buttons as the template has them, and an empty text
// its size.
TEST(EnglishLayout, TheMessageBoxLooksAsItsTemplate) {
  const BoxRun box("", 0xF);
  ASSERT_NE(box.Window(), nullptr);
  constexpr DWORD kButton = BS_OWNERDRAW | WS_TABSTOP;
  ExpectControls(box.Window(), {
                                   {10000, L"", 7, 7, 0, 0, SS_ICON},
                                   {10001, L"Message", 32, 13, 100, 8, SS_LEFT | SS_NOPREFIX},
                                   {1, L"OK", 3, 36, 42, 14, kButton},
                                   {2, L"Cancel", 49, 36, 42, 14, kButton},
                                   {8, L"", 95, 36, 42, 14, kButton},
                               });
  ExpectFont(box.Window(), L"MS Shell Dlg", FW_NORMAL);
  EXPECT_EQ(TextOf(box.Window()), L"VELQUIN");
  EXPECT_EQ(ClientOf(box.Window()), FromDialogUnits(box.Window(), 0, 0, 140, 58));
  EXPECT_EQ(WindowStyle(box.Window()), kDialogStyle);
}

}  // namespace
