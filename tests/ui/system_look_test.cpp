// SPDX-License-Identifier: MIT
// What the family looks like with its flag for the system's look set: not a pixel is its own.
#include <gmock/gmock.h>

#include "res/resource_ids.h"
#include "tests/ui/control_fixture.h"
#include "ui/orl_button.h"
#include "ui/orl_dialog.h"
#include "ui/orl_edit.h"
#include "ui/orl_group_box.h"
#include "ui/orl_radio_button.h"
#include "ui/orl_slider.h"
#include "ui/orl_spin_button.h"
#include "ui/orl_static.h"

namespace {

constexpr SIZE kSize = {100, 40};

template <typename Control>
class InSystemLook : public Control {
 public:
  InSystemLook() { this->systemLook = 1; }
};

class SystemLook : public ControlFixture {
 protected:
  enum Which { kSystems, kInSystemLook, kDark, kCount };

  void MakeAll(const char* className, DWORD style) {
    for (int i = 0; i < kCount; ++i) {
      const CPoint corner(10, 10 + i * 60);
      windows[i] = Add(className, "Text", style,
                       {corner.x, corner.y, corner.x + kSize.cx, corner.y + kSize.cy}, Id(i));
      // The system makes a new spin button as narrow as it likes.
      ::MoveWindow(windows[i], corner.x, corner.y, kSize.cx, kSize.cy, FALSE);
    }
  }
  static UINT Id(int which) { return kId + static_cast<UINT>(which); }

  // How many pixels of a control, its frame included, differ from those of the system's.
  int DifferingPixels(Which which) const {
    const Picture systems = Look(kSystems);
    const Picture other = Look(which);
    int different = 0;
    for (LONG y = 0; y < kSize.cy; ++y) {
      for (LONG x = 0; x < kSize.cx; ++x) different += systems.At(x, y) != other.At(x, y) ? 1 : 0;
    }
    return different;
  }
  // The dark one shows that there is a difference to be seen.
  void ExpectTheSystems() {
    ::SetFocus(parent.m_hWnd);
    for (const BOOL enabled : {TRUE, FALSE}) {
      SCOPED_TRACE(enabled ? "enabled" : "disabled");
      for (HWND window : windows) ::EnableWindow(window, enabled);
      EXPECT_EQ(DifferingPixels(kInSystemLook), 0);
      EXPECT_GT(DifferingPixels(kDark), 20);
    }
  }
  void ExpectTheSystemsErasing() const {
    EXPECT_EQ(ErasedPixels(kInSystemLook), ErasedPixels(kSystems));
  }

  HWND windows[kCount] = {};

 private:
  Picture Look(Which which) const {
    // Some have the parent's ground.
    ::RedrawWindow(parent.m_hWnd, nullptr, nullptr,
                   RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
    return Picture::OfWindow(windows[which]);
  }
  // The pixels that the control's erasing leaves as they are.
  int ErasedPixels(Which which) const {
    Picture picture(static_cast<int>(kSize.cx), static_cast<int>(kSize.cy));
    ::SendMessageA(windows[which], WM_ERASEBKGND,
                   reinterpret_cast<WPARAM>(picture.Dc().GetSafeHdc()), 0);
    return picture.Count(kUntouched);
  }
};

}  // namespace

TEST_F(SystemLook, AButtonIsTheSystems) {
  MakeAll("Button", BS_PUSHBUTTON);
  InSystemLook<COrlButton> plain;
  COrlButton dark;
  // It gives the style back that makes a button draw itself.
  ::SetWindowLongA(windows[kInSystemLook], GWL_STYLE,
                   ::GetWindowLongA(windows[kInSystemLook], GWL_STYLE) | BS_OWNERDRAW);
  ASSERT_TRUE(plain.AttachButton(Id(kInSystemLook), &parent));
  ASSERT_TRUE(dark.AttachButton(Id(kDark), &parent));
  ExpectTheSystems();
}

TEST_F(SystemLook, ASliderIsTheSystems) {
  MakeAll("msctls_trackbar32", TBS_AUTOTICKS);
  InSystemLook<COrlSlider> plain;
  COrlSlider dark;
  ASSERT_TRUE(plain.AttachSlider(Id(kInSystemLook), &parent));
  ASSERT_TRUE(dark.AttachSlider(Id(kDark), &parent));
  ExpectTheSystems();
}

TEST_F(SystemLook, AnEditIsTheSystems) {
  MakeAll("Edit", 0);
  for (HWND window : windows) {
    ::SetWindowLongA(window, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
    ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
  }
  InSystemLook<COrlEdit> plain;
  COrlEdit dark;
  ASSERT_TRUE(plain.AttachEdit(Id(kInSystemLook), &parent));
  ASSERT_TRUE(dark.AttachEdit(Id(kDark), &parent));
  ExpectTheSystems();
}

TEST_F(SystemLook, AGroupBoxIsTheSystems) {
  MakeAll("Button", BS_GROUPBOX);
  InSystemLook<COrlGroupBox> plain;
  COrlGroupBox dark;
  ASSERT_TRUE(plain.AttachGroupBox(Id(kInSystemLook), &parent));
  ASSERT_TRUE(dark.AttachGroupBox(Id(kDark), &parent));
  ExpectTheSystems();
}

TEST_F(SystemLook, ARadioButtonIsTheSystems) {
  MakeAll("Button", BS_RADIOBUTTON);
  InSystemLook<COrlRadioButton> plain;
  COrlRadioButton dark;
  ASSERT_TRUE(plain.AttachRadioButton(Id(kInSystemLook), &parent));
  ASSERT_TRUE(dark.AttachRadioButton(Id(kDark), &parent));
  ExpectTheSystems();
  ExpectTheSystemsErasing();
}

TEST_F(SystemLook, ASpinButtonIsTheSystems) {
  MakeAll("msctls_updown32", 0);
  InSystemLook<COrlSpinButton> plain;
  COrlSpinButton dark;
  ASSERT_TRUE(plain.AttachSpinButton(Id(kInSystemLook), &parent));
  ASSERT_TRUE(dark.AttachSpinButton(Id(kDark), &parent));
  ExpectTheSystems();
}

TEST_F(SystemLook, AStaticIsTheSystems) {
  MakeAll("Static", WS_BORDER);
  InSystemLook<COrlStatic> plain;
  COrlStatic dark;
  ASSERT_TRUE(plain.AttachStatic(Id(kInSystemLook), &parent));
  ASSERT_TRUE(dark.AttachStatic(Id(kDark), &parent));
  ExpectTheSystems();
  ExpectTheSystemsErasing();
}

// --- dialogs

namespace {

class DetailInSystemLook : public COrlDialog {
 public:
  DetailInSystemLook() : COrlDialog(IDD_DETAIL, nullptr) { systemLook = 1; }
};

// What a dialog answers when a control asks for its colours.
struct Colours {
  LRESULT brush;
  COLORREF text, ground;
  int mode;
  bool operator==(const Colours&) const = default;
};

Colours ColoursOf(const CWnd& dialog, UINT message) {
  Picture picture(4, 4);
  const HDC dc = picture.Dc().GetSafeHdc();
  const HWND control = ::GetDlgItem(dialog.m_hWnd, IDC_DETAIL_LINE1);
  const LRESULT brush =
      dialog.SendMessage(message, reinterpret_cast<WPARAM>(dc), reinterpret_cast<LPARAM>(control));
  return {brush, ::GetTextColor(dc), ::GetBkColor(dc), ::GetBkMode(dc)};
}

}  // namespace

TEST_F(SystemLook, ADialogHasTheSystemsColoursAndSize) {
  CDialog systems(IDD_DETAIL);
  DetailInSystemLook plain;
  COrlDialog dark(IDD_DETAIL, nullptr);
  ASSERT_TRUE(systems.Create(IDD_DETAIL, nullptr));
  ASSERT_TRUE(plain.COrlDialog::Create());
  ASSERT_TRUE(dark.COrlDialog::Create());
  for (UINT message = WM_CTLCOLORMSGBOX; message <= WM_CTLCOLORSTATIC; ++message) {
    EXPECT_TRUE(ColoursOf(plain, message) == ColoursOf(systems, message)) << message;
    EXPECT_FALSE(ColoursOf(dark, message) == ColoursOf(systems, message)) << message;
  }
  const auto sizeOf = [](const CRect& rect) { return CRect(0, 0, rect.Width(), rect.Height()); };
  EXPECT_EQ(sizeOf(plain.GetWindowRect()), sizeOf(systems.GetWindowRect()));
  EXPECT_EQ(plain.GetClientRect(), systems.GetClientRect());
  for (CWnd* each :
       {static_cast<CWnd*>(&systems), static_cast<CWnd*>(&plain), static_cast<CWnd*>(&dark)}) {
    each->DestroyWindow();
  }
}
