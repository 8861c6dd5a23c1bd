// SPDX-License-Identifier: MIT
// The language of the built library's windows, in their texts and in pixels. There is a program of
// this for a Japanese system and one for an English one (window_texts.h).
#include "tests/library/ui/driver_host.h"
#include "tests/library/ui/picture.h"
#include "tests/library/ui/window_texts.h"
#include "tests/support/replaced_import.h"

namespace {

using namespace ui_test;
using testing::ElementsAreArray;

constexpr int kDetailLine = 1002;
constexpr int kDetailClose = 8;

SHORT WINAPI ControlIsHeld(int key) {
  return key == VK_CONTROL ? static_cast<SHORT>(0x8000) : SHORT{0};
}

std::vector<HWND> ControlsWithText(HWND dialog) {
  std::vector<HWND> controls;
  for (HWND at = GetWindow(dialog, GW_CHILD); at != nullptr; at = GetWindow(at, GW_HWNDNEXT)) {
    const std::wstring text = TextOf(at);
    if (!text.empty() && text != L"Slider1") controls.push_back(at);
  }
  return controls;
}

// The pixels of a text, row by row: '#' where something is drawn. In rows of one colour, as buttons
// and labels have them below their text, that is what differs from the row's first pixel.
std::string Drawing(const Picture& picture, const CRect& part) {
  std::string drawing;
  for (LONG y = part.top; y < part.bottom; ++y) {
    for (LONG x = part.left; x < part.right; ++x)
      drawing += picture.At(x, y) == picture.At(part.left, y) ? '.' : '#';
    drawing += '\n';
  }
  return drawing;
}

// What a control shows, and what it would show with a certain text in the dialog's font.
void ExpectDrawn(HWND control, const wchar_t* text) {
  wchar_t kind[16] = L"";
  GetClassNameW(control, kind, 16);
  const bool isButton = kind == std::wstring(L"Button");
  const bool toTheRight = (GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) == SS_RIGHT;
  const UINT ofLabel = toTheRight ? DT_RIGHT : DT_LEFT;
  const Picture shown = Picture::OfClient(control);
  Picture expected(shown.Size().cx, shown.Size().cy);
  CRect rect = expected.Rect();
  const CSelectedObject selected(expected.Dc(),
                                 reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)));
  expected.Dc().SetBkMode(TRANSPARENT);
  DrawTextW(expected.Dc().GetSafeHdc(), text, -1, &rect,
            isButton ? DT_CENTER | DT_VCENTER | DT_SINGLELINE : ofLabel | DT_NOPREFIX);
  CRect part = expected.Rect();
  if (isButton) part.DeflateRect(1, 1);  // its border
  const std::string drawing = Drawing(expected, part);
  EXPECT_NE(drawing.find('#'), std::string::npos);
  EXPECT_EQ(Drawing(shown, part), drawing);
}

class Texts : public DriverHost {};

TEST_F(Texts, AreLookedAtOnTheSystemTheyAreFor) {
  EXPECT_EQ(GetACP(), kWindowTexts.codePage);
  EXPECT_EQ(DotsPerInch(), 96) << "left behind by a killed run; ui_english_tests takes it back";
}

TEST_F(Texts, OfTheHandController) {
  OpenWindow();
  EXPECT_EQ(TextOf(window), L"VELQUIN");
  std::vector<std::wstring> texts;
  for (HWND control : ControlsWithText(window)) texts.push_back(TextOf(control));
  EXPECT_THAT(texts, ElementsAreArray(kWindowTexts.handController));
}

TEST_F(Texts, OfTheHandControllerAreDrawn) {
  Connect();
  SetTarget();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kGoto));
  const std::vector<HWND> controls = ControlsWithText(window);
  ASSERT_EQ(controls.size(), kWindowTexts.handController.size());
  host.Do([&] {
    for (size_t i = 0; i < controls.size(); ++i) {
      SCOPED_TRACE(i);
      ExpectDrawn(controls[i], kWindowTexts.handController[i]);
    }
  });
}

TEST_F(Texts, OfTheDetailWindow) {
  const ReplacedImport control("GetAsyncKeyState", reinterpret_cast<void*>(&ControlIsHeld));
  Connect();
  OpenWindow();
  ASSERT_TRUE(WaitEnabled(kStop));
  BeginClick(kStop);
  HWND detail = WaitForDialogWith(kDetailLine);
  ASSERT_NE(detail, nullptr);
  EXPECT_EQ(TextOf(detail), kWindowTexts.detailCaption);
  EXPECT_EQ(TextOf(detail, kDetailClose), kWindowTexts.detailClose);
  PostMessageW(detail, WM_COMMAND, IDCANCEL, 0);
  EXPECT_TRUE(WaitUntilGone(detail));
}

TEST_F(Texts, OfTheSyncQuestion) {
  RaiseSyncQuestion();
  EXPECT_EQ(TextOf(box), L"VELQUIN");
  EXPECT_EQ(TextOf(box, kMessageText), kWindowTexts.syncQuestion);
  EXPECT_EQ(TextOf(box, IDOK), L"OK");
  EXPECT_EQ(TextOf(box, IDCANCEL), kWindowTexts.cancel);
  host.Do([&] {
    ExpectDrawn(GetDlgItem(box, IDOK), L"OK");
    ExpectDrawn(GetDlgItem(box, IDCANCEL), kWindowTexts.cancel);
    ExpectDrawn(GetDlgItem(box, kMessageText), kWindowTexts.syncQuestion);
  });
  Click(box, IDCANCEL);
  EXPECT_TRUE(WaitUntilGone(box));
}

// The longest one, which a wrong measure would break in the middle.
TEST_F(Texts, OfAStartThatNobodyAnswers) {
  mount.IsSilentTo("$SYVER?");
  host.Begin([&] { dll.Start(host.Window(), mount.Address().c_str(), nullptr, 0); });
  box = WaitForDialogWith(kMessageText);
  ASSERT_NE(box, nullptr);
  EXPECT_EQ(TextOf(box, kMessageText), kWindowTexts.noResponse);
  host.Do([&] { ExpectDrawn(GetDlgItem(box, kMessageText), kWindowTexts.noResponse); });
  Click(box, IDOK);
  EXPECT_TRUE(WaitUntilGone(box));
}

// The choice is made once: what the system says later changes nothing.
UINT WINAPI AnotherCodePage() {
  return kWindowTexts.handController[0] == std::wstring(L"N") ? 932 : 1252;
}

TEST_F(Texts, StayInTheLanguageOfTheLoad) {
  const ReplacedImport codePage("GetACP", reinterpret_cast<void*>(&AnotherCodePage));
  RaiseSyncQuestion();
  EXPECT_EQ(TextOf(window, kGoto), kWindowTexts.handController[6]);
  EXPECT_EQ(TextOf(box, kMessageText), kWindowTexts.syncQuestion);
  EXPECT_EQ(TextOf(box, IDCANCEL), kWindowTexts.cancel);
  Click(box, IDCANCEL);
  EXPECT_TRUE(WaitUntilGone(box));
}

}  // namespace
