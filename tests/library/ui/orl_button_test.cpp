// SPDX-License-Identifier: MIT
#include "library/ui/orl_button.h"

#include <gmock/gmock.h>

#include <string>

#include "tests/library/ui/control_fixture.h"

namespace {

using testing::ElementsAre;

const Colour kText(180, 180, 180);
const Colour kDisabledText(107, 107, 107);
const Colour kFocusedText(0, 182, 157);
const Colour kBlack(0, 0, 0);
const Colour kDark(34, 34, 34);

// The item lies away from the picture's edges, so that too much paint would be seen.
const CRect kItem(4, 3, 84, 31);  // 80 wide, 28 high

class Button : public ControlFixture {
 protected:
  void SetUp() override {
    Add("Button", "Go", BS_PUSHBUTTON, {10, 10, 90, 38});
    ASSERT_TRUE(button.AttachButton(kId, &parent));
  }

  // Has the button drawn as the system would ask for it.
  void Draw(Picture& picture, UINT state, const CRect& item = kItem) const {
    CSelectedObject font(picture.Dc(), button.GetFont());
    DRAWITEMSTRUCT request = {};
    request.CtlType = ODT_BUTTON;
    request.CtlID = kId;
    request.itemAction = ODA_DRAWENTIRE;
    request.itemState = state;
    request.hwndItem = button.m_hWnd;
    request.hDC = picture.Dc().GetSafeHdc();
    request.rcItem = item;
    EXPECT_TRUE(parent.SendMessage(WM_DRAWITEM, kId, reinterpret_cast<LPARAM>(&request)));
  }

  // Draws a text, and nothing else, in the middle of a rectangle.
  void DrawPlainText(Picture& picture, const std::string& text, const CRect& rect) const {
    const HDC dc = picture.Dc().GetSafeHdc();
    CSelectedObject font(picture.Dc(), button.GetFont());
    ::SetBkMode(dc, TRANSPARENT);
    ::SetTextColor(dc, kText.value);
    RECT place = rect;
    ::DrawTextA(dc, text.c_str(), -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
  }

  COrlButton button;
};

struct Look {
  const char* name;
  UINT state;
  int bottom[3];
  int top[3];
  Colour text;
};

class ButtonLook : public Button, public testing::WithParamInterface<Look> {};

// Half black, half white; its right half is transparent. 16 by 16.
HICON MakeIcon(bool withOpacity) {
  constexpr int kSize = 16;
  BITMAPINFO format = {};
  format.bmiHeader.biSize = sizeof format.bmiHeader;
  format.bmiHeader.biWidth = kSize;
  format.bmiHeader.biHeight = -kSize;
  format.bmiHeader.biPlanes = 1;
  format.bmiHeader.biBitCount = 32;
  void* bits = nullptr;
  const HBITMAP colours = ::CreateDIBSection(nullptr, &format, DIB_RGB_COLORS, &bits, nullptr, 0);
  auto* pixel = static_cast<uint32_t*>(bits);
  BYTE mask[kSize * 2];
  for (int y = 0; y < kSize; ++y) {
    for (int x = 0; x < kSize; ++x) {
      const uint32_t colour = x >= kSize / 2 ? 0 : y < kSize / 2 ? 0x000000 : 0xFFFFFF;
      *pixel++ = colour | (withOpacity && x < kSize / 2 ? 0xFF000000u : 0);
    }
    mask[2 * y] = withOpacity ? 0xFF : 0x00;  // to be ignored when the icon has opacity
    mask[2 * y + 1] = 0xFF;
  }
  const HBITMAP shape = ::CreateBitmap(kSize, kSize, 1, 1, mask);
  ICONINFO description = {TRUE, 0, 0, shape, colours};
  const HICON icon = ::CreateIconIndirect(&description);
  ::DeleteObject(shape);
  ::DeleteObject(colours);
  return icon;
}

}  // namespace

TEST_P(ButtonLook, HasTheGroundOfItsState) {
  const Look& look = GetParam();
  Picture picture(100, 40);
  Draw(picture, look.state);
  const int height = kItem.Height();
  // The first and the last but one row lie under the frame; the row below the item belongs to it.
  for (int i = 0; i <= height; ++i) {
    if (i == 1 || i == height) continue;
    const auto channel = [&](int c) {
      return look.bottom[c] +
             static_cast<int>(i * ((look.top[c] - look.bottom[c]) / double(height)));
    };
    EXPECT_EQ(picture.At(kItem.left + 2, kItem.bottom - i),
              Colour(channel(0), channel(1), channel(2)))
        << "row " << i;
  }
}

TEST_P(ButtonLook, HasABlackFrameAndNothingOutside) {
  Picture picture(100, 40);
  Draw(picture, GetParam().state);
  EXPECT_EQ(picture.Around(kBlack), kItem);
  for (LONG x = kItem.left; x < kItem.right; ++x) {
    EXPECT_EQ(picture.At(x, kItem.top), kBlack);
    EXPECT_EQ(picture.At(x, kItem.bottom - 1), kBlack);
  }
  for (LONG y = kItem.top; y < kItem.bottom; ++y) {
    EXPECT_EQ(picture.At(kItem.left, y), kBlack);
    EXPECT_EQ(picture.At(kItem.right - 1, y), kBlack);
  }
  EXPECT_EQ(picture.Count(kUntouched), 100 * 40 - kItem.Width() * (kItem.Height() + 1));
}

TEST_P(ButtonLook, HasTheTextColourOfItsStateInTheMiddle) {
  Picture picture(100, 40);
  Draw(picture, GetParam().state);
  for (const Colour& colour : {kText, kDisabledText, kFocusedText}) {
    EXPECT_EQ(picture.Count(colour) > 0, colour == GetParam().text) << colour;
  }
  const CRect text = picture.Around(GetParam().text);
  EXPECT_NEAR(text.left - kItem.left, kItem.right - text.right, 2);
  EXPECT_NEAR(text.top - kItem.top, kItem.bottom - text.bottom, 4);
}

TEST_P(ButtonLook, IsFlatWithTheFlatStyle) {
  button.ModifyStyle(0, BS_FLAT);
  Picture picture(100, 40);
  Draw(picture, GetParam().state);
  EXPECT_EQ(picture.Around(kBlack), kItem);
  EXPECT_EQ(picture.Count(kBlack), 2 * kItem.Width() + 2 * kItem.Height() - 4);
  const int text = picture.Count(GetParam().text);
  EXPECT_GT(text, 0);
  EXPECT_EQ(picture.Count(kDark) + text, (kItem.Width() - 2) * (kItem.Height() - 2));
  EXPECT_EQ(picture.Count(kUntouched), 100 * 40 - kItem.Width() * kItem.Height());
}

INSTANTIATE_TEST_SUITE_P(
    States, ButtonLook,
    testing::Values(Look{"Normal", 0, {23, 23, 23}, {37, 37, 37}, kText},
                    Look{"Focused", ODS_FOCUS, {58, 52, 52}, {72, 67, 67}, kFocusedText},
                    Look{"Disabled", ODS_DISABLED, {45, 45, 45}, {47, 47, 47}, kDisabledText},
                    Look{"Pressed", ODS_SELECTED, {91, 71, 71}, {105, 85, 85}, kText},
                    Look{"PressedAndFocused",
                         ODS_SELECTED | ODS_FOCUS,
                         {91, 71, 71},
                         {105, 85, 85},
                         kFocusedText},
                    Look{"PressedAndDisabled",
                         ODS_SELECTED | ODS_DISABLED,
                         {91, 71, 71},
                         {105, 85, 85},
                         kDisabledText},
                    Look{"FocusedAndDisabled",
                         ODS_FOCUS | ODS_DISABLED,
                         {58, 52, 52},
                         {72, 67, 67},
                         kDisabledText},
                    Look{"Everything",
                         ODS_SELECTED | ODS_FOCUS | ODS_DISABLED,
                         {91, 71, 71},
                         {105, 85, 85},
                         kDisabledText}),
    [](const auto& info) { return info.param.name; });

TEST_F(Button, LooksPressedWhenForcedAndNotAnyMore) {
  const auto ground = [&] {
    Picture picture(100, 40);
    Draw(picture, 0);
    return picture.At(kItem.left + 2, kItem.bottom);
  };
  button.SetForcedPressed(true);
  EXPECT_EQ(ground(), Colour(91, 71, 71));
  button.SetForcedPressed(false);
  EXPECT_EQ(ground(), Colour(23, 23, 23));
}

TEST_F(Button, DrawsNoFocusRectangle) {
  Picture focused(100, 40);
  Draw(focused, ODS_FOCUS);
  // Such a rectangle would lie 4 pixels inside of the item; each row there has but one colour.
  const LONG y = kItem.top + 4;
  for (LONG x = kItem.left + 1; x < kItem.right - 1; ++x) {
    EXPECT_EQ(focused.At(x, y), focused.At(kItem.left + 1, y)) << x;
  }
}

TEST_F(Button, ShowsTheTextItHasWhenItIsDrawn) {
  Picture before(100, 40);
  Draw(before, 0);
  button.SetWindowText("");
  Picture empty(100, 40);
  Draw(empty, 0);
  EXPECT_GT(before.Count(kText), 0);
  EXPECT_EQ(empty.Count(kText), 0);
}

// The buffer has room for 511 characters and the end of the text.
TEST_F(Button, ShowsTheFirst511CharactersOfItsText) {
  std::string text;
  for (int i = 0; i < 600; ++i) text += "iWl.mO1x"[(i + i / 8) % 8];
  for (size_t length : {size_t{510}, size_t{511}, size_t{512}, size_t{600}}) {
    SCOPED_TRACE(length);
    button.SetWindowText(text.substr(0, length).c_str());
    const CRect wide(4, 3, 6004, 31);
    Picture shown(6010, 40);
    Draw(shown, 0, wide);
    Picture expected(6010, 40);
    const std::string whole = text.substr(0, std::min<size_t>(length, 511));
    DrawPlainText(expected, whole, wide);
    const CRect place = expected.Around(kText);
    ASSERT_GT(place.left, wide.left + 10);  // nothing of it is cut
    int different = 0;
    for (LONG y = wide.top; y < wide.bottom; ++y) {
      for (LONG x = wide.left; x < wide.right; ++x)
        different += (shown.At(x, y) == kText) != (expected.At(x, y) == kText) ? 1 : 0;
    }
    EXPECT_EQ(different, 0);
  }
}

TEST_F(Button, UsesTheColoursItWasGiven) {
  const HWND other = Add("Button", "Go", BS_PUSHBUTTON, {10, 60, 90, 88}, 78);
  COrlButton coloured;
  ASSERT_TRUE(coloured.AttachButton(78, &parent, 5, RGB(1, 2, 3), RGB(4, 5, 6), RGB(7, 8, 9), 1));
  const auto colours = [&](UINT state) {
    Picture picture(100, 40);
    CSelectedObject font(picture.Dc(), coloured.GetFont());
    DRAWITEMSTRUCT request = {ODT_BUTTON, 78, 0, ODA_DRAWENTIRE, state, other, nullptr, kItem, 0};
    request.hDC = picture.Dc().GetSafeHdc();
    parent.SendMessage(WM_DRAWITEM, 78, reinterpret_cast<LPARAM>(&request));
    return std::vector<bool>{picture.Count(Colour(1, 2, 3)) > 0, picture.Count(Colour(4, 5, 6)) > 0,
                             picture.Count(Colour(7, 8, 9)) > 0};
  };
  EXPECT_THAT(colours(0), ElementsAre(true, false, false));
  EXPECT_THAT(colours(ODS_DISABLED), ElementsAre(false, true, false));
  EXPECT_THAT(colours(ODS_FOCUS), ElementsAre(false, false, true));
}

TEST_F(Button, ShowsItsWindowsStateOnTheScreen) {
  const auto corner = [&] { return Picture::OfClient(button.m_hWnd).At(2, 2).value; };
  const COLORREF atRest = corner();
  button.SendMessage(BM_SETSTATE, TRUE);
  EXPECT_EQ(Colour(corner()), Colour(104, 84, 84));
  button.SendMessage(BM_SETSTATE, FALSE);
  EXPECT_EQ(corner(), atRest);
  button.EnableWindow(FALSE);
  EXPECT_EQ(Colour(corner()), Colour(46, 46, 46));
}

// --- icons

TEST_F(Button, ShowsAnIconInPlaceOfTheText) {
  const HICON icon = MakeIcon(false);
  button.SetButtonIcon(icon, {16, 16});
  EXPECT_TRUE(button.GetStyle() & BS_ICON);
  Picture picture(100, 40);
  Draw(picture, 0);
  EXPECT_EQ(picture.Count(kText), 0);
  // 80 by 28 around 16 by 16: 32 pixels to the left, 6 above.
  const CRect left(kItem.left + 32, kItem.top + 6, kItem.left + 40, kItem.top + 22);
  EXPECT_EQ(picture.Around(Colour(255, 255, 255)),
            CRect(left.left, left.top + 8, left.right, left.bottom));
  EXPECT_EQ(picture.Count(kBlack, left), 8 * 8);
  EXPECT_EQ(picture.At(left.right + 2, left.bottom - 1),
            picture.At(kItem.left + 2, left.bottom - 1));
  ::DestroyIcon(icon);
}

TEST_F(Button, ShowsAGreyCopyOfTheIconWhenDisabled) {
  for (bool withOpacity : {false, true}) {
    SCOPED_TRACE(withOpacity ? "opacity of its own" : "mask only");
    const HICON icon = MakeIcon(withOpacity);
    button.SetButtonIcon(icon, {16, 16});
    Picture picture(100, 40);
    Draw(picture, ODS_DISABLED);
    const CRect left(kItem.left + 32, kItem.top + 6, kItem.left + 40, kItem.top + 22);
    EXPECT_EQ(picture.Around(kText), CRect(left.left, left.top + 8, left.right, left.bottom));
    EXPECT_EQ(picture.Count(kText), 8 * 8);
    EXPECT_EQ(picture.Count(kDisabledText), 8 * 8);
    EXPECT_EQ(picture.At(left.right + 2, left.bottom - 1),
              picture.At(kItem.left + 2, left.bottom - 1));
    ::DestroyIcon(icon);
  }
}

TEST_F(Button, ShowsItsTextAgainWithoutAnIcon) {
  const HICON icon = MakeIcon(false);
  button.SetButtonIcon(icon, {16, 16});
  button.SetButtonIcon(nullptr, {0, 0});
  for (UINT state : {0u, static_cast<UINT>(ODS_DISABLED)}) {
    Picture picture(100, 40);
    Draw(picture, state);
    EXPECT_GT(picture.Count(state == 0 ? kText : kDisabledText), 0);
  }
  ::DestroyIcon(icon);
}

// --- behaviour

TEST_F(Button, DoesNotEraseItsGround) {
  Picture picture(100, 40);
  const auto dc = reinterpret_cast<WPARAM>(picture.Dc().GetSafeHdc());
  EXPECT_TRUE(button.SendMessage(WM_ERASEBKGND, dc));
  EXPECT_EQ(picture.Count(kUntouched), 100 * 40);
}

TEST_F(Button, TakesADoubleClickForTwoPresses) {
  const CPoint inside(5, 5);
  Press(button.m_hWnd, inside);
  Release(button.m_hWnd, inside);
  button.SendMessage(WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(5, 5));
  EXPECT_TRUE(button.GetState() & BST_PUSHED);
  Release(button.m_hWnd, inside);
  EXPECT_FALSE(button.GetState() & BST_PUSHED);
  const ParentWindow::Command click = {kId, BN_CLICKED, button.m_hWnd};
  EXPECT_EQ(std::count(parent.commands.begin(), parent.commands.end(), click), 2);
  for (const auto& command : parent.commands) EXPECT_NE(command.code, BN_DOUBLECLICKED);
}

TEST_F(Button, PostsItsCommandWhenEnterIsPressedOnIt) {
  ::SetFocus(button.m_hWnd);
  Pump();
  parent.commands.clear();
  button.SendMessage(WM_KEYDOWN, VK_RETURN);
  EXPECT_THAT(parent.commands, testing::IsEmpty()) << "posted, not sent";
  Pump();
  EXPECT_THAT(parent.commands, ElementsAre(ParentWindow::Command{kId, BN_CLICKED, button.m_hWnd}));
}

TEST_F(Button, LeavesOtherKeysAndEnterWithoutFocusToTheSystem) {
  ::SetFocus(parent.m_hWnd);
  Pump();
  parent.commands.clear();
  button.SendMessage(WM_KEYDOWN, VK_RETURN);
  Pump();
  EXPECT_THAT(parent.commands, testing::IsEmpty());
  button.SendMessage(WM_KEYDOWN, VK_SPACE);
  EXPECT_TRUE(button.GetState() & BST_PUSHED);
}

TEST_F(Button, BecomesOwnerDrawnWhenAttached) {
  EXPECT_EQ(button.GetStyle() & 0xF, static_cast<DWORD>(BS_OWNERDRAW));
}

TEST_F(Button, IsNotAttachedToAControlThatIsMissing) {
  const HWND neighbour = Add("Button", "No", BS_PUSHBUTTON, {10, 60, 90, 88}, 78);
  COrlButton other;
  EXPECT_FALSE(other.AttachButton(79, &parent));
  EXPECT_EQ(other.m_hWnd, nullptr);
  EXPECT_EQ(CWnd::FromHandlePermanent(neighbour), nullptr);
  EXPECT_EQ(::GetWindowLongA(neighbour, GWL_STYLE) & 0xF, BS_PUSHBUTTON);
  EXPECT_EQ(CWnd::FromHandlePermanent(button.m_hWnd), &button);
}

TEST_F(Button, HandsDrawingBackToTheSystemInTheSystemsLook) {
  struct SystemButton : COrlButton {
    SystemButton() { systemLook = 1; }
  };
  Add("Button", "No", BS_OWNERDRAW, {10, 60, 90, 88}, 78);
  SystemButton plain;
  EXPECT_TRUE(plain.AttachButton(78, &parent));
  EXPECT_EQ(plain.GetStyle() & 0xF, 0u);
}

// --- the check-box look

namespace {

class RecordingApp : public CWinApp {
 public:
  int DoMessageBox(LPCSTR prompt, UINT, UINT) override {
    messages.emplace_back(prompt);
    return IDOK;
  }
  std::vector<std::string> messages;
};

const Colour kCheckGround(128, 120, 136);

class CheckBoxLook : public Button {
 protected:
  void SetUp() override {
    Button::SetUp();
    button.ModifyStyle(0xF, BS_CHECKBOX);
  }
  RecordingApp recorder;
};

}  // namespace

TEST_F(CheckBoxLook, IsAGradientInABlackFrame) {
  Picture picture(100, 40);
  Draw(picture, 0);
  EXPECT_THAT(recorder.messages, ElementsAre("checkbox."));
  EXPECT_EQ(picture.At(kItem.right, kItem.top + 5), kCheckGround);
  EXPECT_EQ(picture.At(kItem.left + 40, kItem.top + 2), Colour(64, 60, 68));
  EXPECT_EQ(picture.Around(kBlack), kItem);
  EXPECT_GT(picture.Count(kText), 0);
}

TEST_F(CheckBoxLook, ShowsTheFocusByARectangleAndTheTextColour) {
  Picture picture(100, 40);
  Draw(picture, ODS_FOCUS);
  EXPECT_GT(picture.Count(kFocusedText), 0);
  EXPECT_EQ(picture.Count(kText), 0);
  // Every second pixel of the rectangle is inverted.
  int inverted = 0;
  for (LONG x = kItem.left + 4; x < kItem.right - 4; ++x) {
    inverted += picture.At(x, kItem.top + 4) != picture.At(x, kItem.top + 3) ? 1 : 0;
  }
  EXPECT_NEAR(inverted, (kItem.Width() - 8) / 2, 1);
}

TEST_F(CheckBoxLook, IsGreenWhenCheckedAndPressed) {
  button.SendMessage(BM_SETCHECK, BST_CHECKED);
  Picture picture(100, 40);
  Draw(picture, ODS_FOCUS | ODS_SELECTED);
  EXPECT_THAT(recorder.messages, ElementsAre("checkbox.", "checked."));
  EXPECT_EQ(picture.At(kItem.right, kItem.top + 5), Colour(0, 255, 0));
  EXPECT_EQ(picture.At(kItem.left + 40, kItem.top + 2), Colour(0, 191, 0));
  EXPECT_EQ(picture.At(kItem.left, kItem.top), kBlack);
  EXPECT_EQ(picture.At(kItem.left + 1, kItem.top + 1), Colour(118, 118, 118));
}

TEST_F(CheckBoxLook, KeepsItsGroundWhenPressedUncheckedAndMovesItsText) {
  Picture atRest(100, 40);
  Draw(atRest, ODS_FOCUS);
  Picture pressed(100, 40);
  Draw(pressed, ODS_FOCUS | ODS_SELECTED);
  EXPECT_THAT(recorder.messages, ElementsAre("checkbox.", "checkbox."));
  EXPECT_EQ(pressed.At(kItem.right, kItem.top + 5), kCheckGround);
  CRect moved = atRest.Around(kFocusedText);
  moved.OffsetRect(1, 1);
  EXPECT_EQ(pressed.Around(kFocusedText), moved);
}
