// SPDX-License-Identifier: MIT
// What the family looks like with its flag for the system's look set: not a pixel is its own.
#include <gmock/gmock.h>

#include "library/ui/orl_button.h"
#include "library/ui/orl_dialog.h"
#include "library/ui/orl_edit.h"
#include "library/ui/orl_group_box.h"
#include "library/ui/orl_radio_button.h"
#include "library/ui/orl_slider.h"
#include "library/ui/orl_spin_button.h"
#include "library/ui/orl_static.h"
#include "res/resource_ids.h"
#include "tests/library/ui/control_fixture.h"

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
  template <typename Control>
  void ExpectTheSystems(BOOL (Control::*attach)(UINT, const CWnd*)) {
    InSystemLook<Control> plain;
    Control dark;
    ASSERT_TRUE((plain.*attach)(Id(kInSystemLook), &parent));
    ASSERT_TRUE((dark.*attach)(Id(kDark), &parent));
    ::SetFocus(parent.m_hWnd);
    for (const BOOL enabled : {TRUE, FALSE}) {
      SCOPED_TRACE(enabled ? "enabled" : "disabled");
      for (HWND window : windows) ::EnableWindow(window, enabled);
      EXPECT_EQ(DifferingPixels(kInSystemLook), 0);
      EXPECT_GT(DifferingPixels(kDark), 20);
      EXPECT_EQ(PixelsNotErased(kInSystemLook), PixelsNotErased(kSystems));
    }
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
  int PixelsNotErased(Which which) const {
    Picture picture(static_cast<int>(kSize.cx), static_cast<int>(kSize.cy));
    ::SendMessageA(windows[which], WM_ERASEBKGND,
                   reinterpret_cast<WPARAM>(picture.Dc().GetSafeHdc()), 0);
    return picture.Count(kUntouched);
  }
};

}  // namespace

TEST_F(SystemLook, AButtonIsTheSystems) {
  MakeAll("Button", BS_PUSHBUTTON);
  // It gives the style back that makes a button draw itself.
  ::SetWindowLongA(windows[kInSystemLook], GWL_STYLE,
                   ::GetWindowLongA(windows[kInSystemLook], GWL_STYLE) | BS_OWNERDRAW);
  ExpectTheSystems<COrlButton>(&COrlButton::AttachButton);
}

TEST_F(SystemLook, ASliderIsTheSystems) {
  MakeAll("msctls_trackbar32", TBS_AUTOTICKS);
  ExpectTheSystems<COrlSlider>(&COrlSlider::AttachSlider);
}

TEST_F(SystemLook, AnEditIsTheSystems) {
  MakeAll("Edit", 0);
  for (HWND window : windows) {
    ::SetWindowLongA(window, GWL_EXSTYLE, WS_EX_CLIENTEDGE);
    ::SetWindowPos(window, nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
  }
  ExpectTheSystems<COrlEdit>(&COrlEdit::AttachEdit);
}

TEST_F(SystemLook, AGroupBoxIsTheSystems) {
  MakeAll("Button", BS_GROUPBOX);
  ExpectTheSystems<COrlGroupBox>(&COrlGroupBox::AttachGroupBox);
}

TEST_F(SystemLook, ARadioButtonIsTheSystems) {
  MakeAll("Button", BS_RADIOBUTTON);
  ExpectTheSystems<COrlRadioButton>(&COrlRadioButton::AttachRadioButton);
}

TEST_F(SystemLook, ASpinButtonIsTheSystems) {
  MakeAll("msctls_updown32", 0);
  ExpectTheSystems<COrlSpinButton>(&COrlSpinButton::AttachSpinButton);
}

TEST_F(SystemLook, AStaticIsTheSystems) {
  MakeAll("Static", WS_BORDER);
  ExpectTheSystems<COrlStatic>(&COrlStatic::AttachStatic);
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
  for (const CWnd* each : {static_cast<CWnd*>(&systems), static_cast<CWnd*>(&plain)}) {
    ::SetWindowPos(each->m_hWnd, nullptr, 0, 0, 0, 0,
                   SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_FRAMECHANGED);
  }
  const auto sizeOf = [](const CRect& rect) { return CRect(0, 0, rect.Width(), rect.Height()); };
  EXPECT_EQ(sizeOf(plain.GetWindowRect()), sizeOf(systems.GetWindowRect()));
  EXPECT_EQ(plain.GetClientRect(), systems.GetClientRect());
  for (CWnd* each :
       {static_cast<CWnd*>(&systems), static_cast<CWnd*>(&plain), static_cast<CWnd*>(&dark)}) {
    each->DestroyWindow();
  }
}
