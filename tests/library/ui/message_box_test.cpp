// SPDX-License-Identifier: MIT
// The library's message box: buttons, icons, sizes and answers.
#include <gmock/gmock.h>

#include "tests/library/ui/box_run.h"
#include "tests/library/ui/message_sounds.h"
#include "tests/library/ui/ui_thread.h"

namespace {

using testing::ElementsAre;
using ui_test::App;
using ui_test::BoxRun;
using ui_test::ClientOf;
using ui_test::FrameOf;
using ui_test::FromDialogUnits;
using ui_test::PlaceOf;
using ui_test::StyleOf;
using ui_test::TakeSounds;
using ui_test::TextOf;

constexpr int kText = 10001;
constexpr int kIcon = 10000;
constexpr int kThird = 8;

bool IsShown(const BoxRun& box, int button) {
  return (StyleOf(box.Window(), button) & WS_VISIBLE) != 0;
}

std::wstring Shown(const BoxRun& box) {
  std::wstring shown;
  for (const int button : {IDOK, IDCANCEL, kThird}) {
    if (IsShown(box, button))
      shown += std::to_wstring(button) + L":" + TextOf(box.Window(), button) + L" ";
  }
  return shown;
}

// A font as the text's control has it, selected for measuring.
class TextMeasure {
 public:
  explicit TextMeasure(const BoxRun& box)
      : control_(GetDlgItem(box.Window(), kText)), dc_(GetDC(control_)) {
    before_ =
        SelectObject(dc_, reinterpret_cast<HGDIOBJ>(SendMessageW(control_, WM_GETFONT, 0, 0)));
  }
  ~TextMeasure() {
    SelectObject(dc_, before_);
    ReleaseDC(control_, dc_);
  }
  LONG Height() const {
    TEXTMETRICW metrics = {};
    GetTextMetricsW(dc_, &metrics);
    return metrics.tmHeight;
  }
  // Each byte by itself.
  LONG Width(const std::string& text) const {
    LONG width = 0;
    for (const char byte : text) {
      SIZE size = {};
      GetTextExtentPoint32A(dc_, &byte, 1, &size);
      width += size.cx;
    }
    return width;
  }

 private:
  HWND control_;
  HDC dc_;
  HGDIOBJ before_;
};

struct ButtonsCase {
  UINT type;
  const wchar_t* shown;
};

TEST(MessageBoxTest, EveryTypeShowsItsButtons) {
  const ButtonsCase cases[] = {
      {MB_OK, L"1:OK "},
      {MB_OKCANCEL, L"1:OK 2:キャンセル "},
      {MB_YESNOCANCEL, L"1:はい(&Y) 2:いいえ(&N) 8:キャンセル "},
      {MB_YESNO, L"1:はい(&Y) 2:いいえ(&N) "},
      {MB_ABORTRETRYIGNORE, L"1:OK 2:キャンセル 8: "},
      {MB_RETRYCANCEL, L"1:OK 2:キャンセル 8: "},
      {0xF, L"1:OK 2:キャンセル 8: "},
  };
  for (const ButtonsCase& each : cases) {
    const BoxRun box("text", each.type);
    ASSERT_NE(box.Window(), nullptr);
    EXPECT_EQ(Shown(box), each.shown) << each.type;
  }
}

TEST(MessageBoxTest, HiddenButtonsAreStillThere) {
  const BoxRun box("text", MB_OK);
  EXPECT_NE(GetDlgItem(box.Window(), IDCANCEL), nullptr);
  EXPECT_NE(GetDlgItem(box.Window(), kThird), nullptr);
}

TEST(MessageBoxTest, ButtonsAnswerByTheKindOfQuestion) {
  struct {
    UINT type;
    int button, answer;
  } const cases[] = {
      {MB_OK, IDOK, IDOK},
      {MB_OKCANCEL, IDOK, IDOK},
      {MB_OKCANCEL, IDCANCEL, IDCANCEL},
      {MB_YESNO, IDOK, IDYES},
      {MB_YESNO, IDCANCEL, IDNO},
      {MB_YESNOCANCEL, IDOK, IDYES},
      {MB_YESNOCANCEL, IDCANCEL, IDNO},
      {MB_YESNOCANCEL, kThird, IDCANCEL},
      {MB_RETRYCANCEL, IDOK, IDOK},
      {MB_RETRYCANCEL, kThird, IDCANCEL},
  };
  for (const auto& each : cases) {
    BoxRun box("text", each.type);
    EXPECT_EQ(box.ClickOn(each.button), each.answer) << each.type << ' ' << each.button;
  }
}

TEST(MessageBoxTest, EscAnswersCancelOrNo) {
  for (const auto& [type, answer] : {std::pair{MB_OKCANCEL, IDCANCEL},
                                     {MB_YESNO, IDNO},
                                     {MB_YESNOCANCEL, IDNO},
                                     {MB_OK, IDCANCEL}}) {
    BoxRun box("text", static_cast<UINT>(type));
    EXPECT_EQ(box.PressKeyInFocus(VK_ESCAPE), answer) << type;
  }
}

TEST(MessageBoxTest, EnterAnswersOkOrYes) {
  for (const auto& [type, answer] :
       {std::pair{MB_OK, IDOK}, {MB_OKCANCEL, IDOK}, {MB_YESNO, IDYES}, {MB_YESNOCANCEL, IDYES}}) {
    BoxRun box("text", static_cast<UINT>(type));
    EXPECT_EQ(box.PressKeyInFocus(VK_RETURN), answer) << type;
  }
}

TEST(MessageBoxTest, EnterAnswersForTheButtonWithTheFocus) {
  struct {
    UINT type;
    int focus, answer;
  } const cases[] = {
      {MB_YESNO, IDOK, IDYES},
      {MB_YESNO, IDCANCEL, IDNO},
      {MB_OKCANCEL, IDCANCEL, IDCANCEL},
      {MB_YESNOCANCEL, IDCANCEL, IDNO},
      {MB_YESNOCANCEL, kThird, IDCANCEL},
  };
  for (const auto& each : cases) {
    BoxRun box("text", each.type);
    box.SetFocusTo(each.focus);
    ASSERT_EQ(GetDlgCtrlID(box.Focus()), each.focus);
    EXPECT_EQ(box.PressKeyInFocus(VK_RETURN), each.answer) << each.type << ' ' << each.focus;
  }
  BoxRun second("text", MB_YESNO | MB_DEFBUTTON2);
  EXPECT_EQ(second.PressKeyInFocus(VK_RETURN), IDNO);
}

// The thread is told to end, as a host's is when its program is closed.
TEST(MessageBoxTest, ABoxThatTheEndOfItsThreadClosesAgreedToNothing) {
  for (const UINT type : {MB_OK, MB_OKCANCEL, MB_YESNO, MB_YESNOCANCEL}) {
    BoxRun box("text", type);
    PostThreadMessageW(GetWindowThreadProcessId(box.Window(), nullptr), WM_QUIT, 0, 0);
    EXPECT_EQ(box.Answer(), IDCANCEL) << type;
    EXPECT_FALSE(IsWindow(box.Window()));
  }
}

// A box on a thread that has a window, which waits for the answer.
class OwnedBoxTest : public testing::Test {
 protected:
  void Open(UINT type) {
    App();
    host.Do([&] { SetActiveWindow(host.Window()); });
    host.Begin([this, type] { answer.set_value(AfxMessageBox("text", type)); });
    box = ui_test::WaitForDialogWith(kText);
    ASSERT_NE(box, nullptr);
    EXPECT_EQ(GetWindow(box, GW_OWNER), host.Window());
    EXPECT_FALSE(IsWindowEnabled(host.Window()));
  }
  bool IsActive(HWND window) const {
    HWND active = nullptr;
    host.Do([&] { active = GetActiveWindow(); });
    return active == window;
  }

  const UiThread host;
  std::promise<int> answer;
  HWND box = nullptr;
};

TEST_F(OwnedBoxTest, TheWindowWaitsAndIsActiveAgainAfterTheAnswer) {
  Open(MB_OKCANCEL);
  EXPECT_TRUE(IsActive(box));
  PostMessageW(box, WM_COMMAND, IDOK, 0);
  EXPECT_EQ(answer.get_future().get(), IDOK);
  EXPECT_TRUE(IsWindowEnabled(host.Window()));
  EXPECT_TRUE(IsActive(host.Window()));
}

TEST_F(OwnedBoxTest, ABoxThatIsDestroyedAgreedToNothing) {
  Open(MB_OK);
  host.Do([&] { DestroyWindow(box); });
  EXPECT_EQ(answer.get_future().get(), IDCANCEL);
  EXPECT_TRUE(IsWindowEnabled(host.Window()));
}

TEST_F(OwnedBoxTest, ItStandsInTheMiddleOfItsWindow) {
  Open(MB_OK);
  RECT around = {};
  RECT own = {};
  GetWindowRect(host.Window(), &around);
  GetWindowRect(box, &own);
  EXPECT_NEAR(own.left + own.right, around.left + around.right, 1);
  EXPECT_NEAR(own.top + own.bottom, around.top + around.bottom, 1);
  PostMessageW(box, WM_COMMAND, IDOK, 0);
  answer.get_future().wait();
}

TEST_F(OwnedBoxTest, ItStaysOnTheScreen) {
  RECT area = {};
  SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
  const POINT corners[] = {{area.left - 50, area.top - 50}, {area.right - 50, area.bottom - 50}};
  for (const POINT& corner : corners) {
    SetWindowPos(host.Window(), nullptr, corner.x, corner.y, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    answer = {};
    Open(MB_OK);
    RECT own = {};
    GetWindowRect(box, &own);
    if (corner.x < area.left) {
      EXPECT_EQ(own.left, area.left);
      EXPECT_EQ(own.top, area.top);
    } else {
      EXPECT_EQ(own.right, area.right);
      EXPECT_EQ(own.bottom, area.bottom);
    }
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    answer.get_future().wait();
  }
}

TEST(MessageBoxTest, WithoutAWindowItStandsInTheMiddleOfTheScreen) {
  for (const std::string text : {"", "one", "one\ntwo\nthree"}) {
    const BoxRun box(text, MB_OK);
    EXPECT_EQ(GetWindow(box.Window(), GW_OWNER), nullptr);
    RECT area = {};
    RECT own = {};
    SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    GetWindowRect(box.Window(), &own);
    EXPECT_NEAR(own.left + own.right, area.left + area.right, 1);
    EXPECT_NEAR(own.top + own.bottom, area.top + area.bottom, 1);
  }
}

TEST(MessageBoxTest, TheCloseBoxAnswersAsEscDoes) {
  BoxRun box("text", MB_YESNO);
  PostMessageW(box.Window(), WM_SYSCOMMAND, SC_CLOSE, 0);
  EXPECT_TRUE(ui_test::WaitUntilGone(box.Window()));
  EXPECT_EQ(box.Press(0), IDNO);
}

TEST(MessageBoxTest, TheSecondButtonHasTheFocusWhenItIsTheDefault) {
  const BoxRun second("text", MB_YESNOCANCEL | MB_DEFBUTTON2);
  EXPECT_EQ(TextOf(second.Focus()), L"いいえ(&N)");
}

TEST(MessageBoxTest, OtherDefaultsLeaveTheFocusOnTheFirstButton) {
  for (const UINT bits : {UINT{MB_DEFBUTTON1}, UINT{MB_DEFBUTTON3}, 0x500u}) {
    const BoxRun box("text", MB_YESNOCANCEL | bits);
    EXPECT_EQ(GetDlgCtrlID(box.Focus()), IDOK) << bits;
  }
}

TEST(MessageBoxTest, AllIconsButQuestionAndInformationAreTheExclamationMark) {
  struct {
    UINT bits;
    LPCSTR icon;
    UINT sound;
  } const cases[] = {
      {0, IDI_EXCLAMATION, MB_ICONEXCLAMATION},
      {MB_ICONSTOP, IDI_EXCLAMATION, MB_ICONEXCLAMATION},
      {MB_ICONQUESTION, IDI_QUESTION, MB_ICONQUESTION},
      {MB_ICONEXCLAMATION, IDI_EXCLAMATION, MB_ICONEXCLAMATION},
      {MB_ICONINFORMATION, IDI_INFORMATION, MB_ICONINFORMATION},
      {0x80, IDI_EXCLAMATION, MB_ICONEXCLAMATION},
  };
  for (const auto& each : cases) {
    TakeSounds();
    const BoxRun box("text", each.bits);
    const auto icon =
        reinterpret_cast<HICON>(SendDlgItemMessageW(box.Window(), kIcon, STM_GETICON, 0, 0));
    EXPECT_EQ(icon, LoadIconA(nullptr, each.icon)) << each.bits;
    EXPECT_THAT(TakeSounds(), ElementsAre(each.sound)) << each.bits;
  }
}

TEST(MessageBoxTest, ItsCaptionIsTheApplicationName) {
  {
    const BoxRun box("text", MB_OK);
    EXPECT_EQ(TextOf(box.Window()), L"VELQUIN");
  }
  App().SetAppName("My Observatory");
  {
    const BoxRun box("text", MB_OK);
    EXPECT_EQ(TextOf(box.Window()), L"My Observatory");
  }
  App().SetAppName("VELQUIN");
}

TEST(MessageBoxTest, AnEmptyTextKeepsTheTemplate) {
  const BoxRun box("", MB_RETRYCANCEL);
  HWND window = box.Window();
  EXPECT_EQ(TextOf(window, kText), L"Message");
  EXPECT_EQ(ClientOf(window), FromDialogUnits(window, 0, 0, 140, 58));
  EXPECT_EQ(PlaceOf(window, kText), FromDialogUnits(window, 32, 13, 100, 8));
  EXPECT_EQ(PlaceOf(window, IDOK), FromDialogUnits(window, 3, 36, 42, 14));
  EXPECT_EQ(PlaceOf(window, IDCANCEL), FromDialogUnits(window, 49, 36, 42, 14));
  EXPECT_EQ(PlaceOf(window, kThird), FromDialogUnits(window, 95, 36, 42, 14));
  const RECT icon = FromDialogUnits(window, 7, 7, 18, 21);
  EXPECT_EQ(PlaceOf(window, kIcon).left, icon.left);
  EXPECT_EQ(PlaceOf(window, kIcon).top, icon.top);
}

TEST(MessageBoxTest, OneButtonStandsInTheMiddle) {
  const BoxRun box("", MB_OK);
  const LONG middle = ClientOf(box.Window()).right / 2;
  const RECT from = FromDialogUnits(box.Window(), 3, 36, 42, 14);
  const RECT button = PlaceOf(box.Window(), IDOK);
  const LONG width = from.right - from.left;
  EXPECT_EQ(button.left, middle - width / 2);
  EXPECT_EQ(button.right - button.left, width);
  EXPECT_EQ(button.top, from.top);
}

TEST(MessageBoxTest, TwoButtonsStandInTheMiddleTogether) {
  const BoxRun box("", MB_OKCANCEL);
  HWND window = box.Window();
  const RECT first = FromDialogUnits(window, 3, 36, 42, 14);
  const RECT second = FromDialogUnits(window, 49, 36, 42, 14);
  const LONG left = ClientOf(window).right / 2 - (second.right - first.left) / 2;
  EXPECT_EQ(PlaceOf(window, IDOK).left, left);
  EXPECT_EQ(PlaceOf(window, IDCANCEL).left, left + second.left - first.left);
}

TEST(MessageBoxTest, TwoLinesGrowTheBoxAndMoveTheButtonsDown) {
  const BoxRun plain("", MB_RETRYCANCEL);
  const RECT frame = FrameOf(plain.Window());
  const BoxRun box("one\r\ntwo", MB_RETRYCANCEL);
  HWND window = box.Window();
  ASSERT_NE(window, plain.Window());
  const TextMeasure measure(plain);
  const RECT before = FromDialogUnits(window, 32, 13, 100, 8);
  const RECT text = PlaceOf(window, kText);
  EXPECT_EQ(TextOf(window, kText), L"one\ntwo\n");
  EXPECT_EQ(text.left, before.left);
  EXPECT_EQ(text.top, before.top);
  EXPECT_EQ(text.right, before.right);  // two short lines fit in the template's width
  EXPECT_EQ(text.bottom - text.top, 2 * measure.Height());
  const LONG taller = 2 * measure.Height() - (before.bottom - before.top);
  EXPECT_EQ(FrameOf(window).bottom, frame.bottom + taller);
  EXPECT_EQ(FrameOf(window).right, frame.right);
  for (const int button : {IDOK, IDCANCEL, kThird}) {
    EXPECT_EQ(PlaceOf(window, button).top, PlaceOf(plain.Window(), button).top + taller);
    EXPECT_EQ(PlaceOf(window, button).left, PlaceOf(plain.Window(), button).left);
  }
}

TEST(MessageBoxTest, AWideLineGrowsTheBoxAndMovesTheButtonsByHalf) {
  const std::string line = "A line that is rather wider than the text of the template";
  const BoxRun box(line, MB_RETRYCANCEL);
  HWND window = box.Window();
  const TextMeasure measure(box);
  const RECT before = FromDialogUnits(window, 32, 13, 100, 8);
  const LONG wider = measure.Width(line) - (before.right - before.left);
  ASSERT_GT(wider, 0);
  ASSERT_LT(measure.Width(line), 600);
  const RECT text = PlaceOf(window, kText);
  EXPECT_EQ(text.right - text.left, measure.Width(line));
  EXPECT_EQ(text.bottom - text.top, measure.Height());
  EXPECT_EQ(ClientOf(window).right, FromDialogUnits(window, 0, 0, 140, 58).right + wider);
  EXPECT_EQ(PlaceOf(window, IDOK).left, FromDialogUnits(window, 3, 36, 42, 14).left + wider / 2);
  EXPECT_EQ(PlaceOf(window, kThird).left, FromDialogUnits(window, 95, 36, 42, 14).left + wider / 2);
}

TEST(MessageBoxTest, ALineOfMoreThan600PixelsIs600WideAndTwoRowsHigh) {
  for (const size_t length : {size_t{150}, size_t{900}}) {
    const BoxRun box(std::string(length, 'm'), MB_OK);
    const TextMeasure measure(box);
    ASSERT_GT(measure.Width(std::string(length, 'm')), 600);
    const RECT text = PlaceOf(box.Window(), kText);
    EXPECT_EQ(text.right - text.left, 600);
    EXPECT_EQ(text.bottom - text.top, 2 * measure.Height());
  }
}

TEST(MessageBoxTest, HelpIsSwallowed) {
  BoxRun box("text", MB_OK);
  HELPINFO help = {};
  help.cbSize = sizeof help;
  EXPECT_NE(SendMessageW(box.Window(), WM_HELP, 0, reinterpret_cast<LPARAM>(&help)), 0);
  EXPECT_TRUE(IsWindowVisible(box.Window()));
}

}  // namespace
