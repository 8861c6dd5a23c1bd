// SPDX-License-Identifier: MIT
// No control may leave drawing objects behind: a host opens and closes dialogs all night.
#include <gtest/gtest.h>

#include "library/ui/orl_button.h"
#include "library/ui/orl_edit.h"
#include "library/ui/orl_group_box.h"
#include "library/ui/orl_radio_button.h"
#include "library/ui/orl_slider.h"
#include "library/ui/orl_spin_button.h"
#include "library/ui/orl_static.h"
#include "tests/library/ui/control_fixture.h"
#include "tests/library/ui/gdi_objects.h"

namespace {

class ControlLeaks : public ControlFixture {
 protected:
  // One life of every control: attached, painted in several states, destroyed.
  void Round() {
    COrlButton button;
    COrlSlider slider;
    COrlEdit edit;
    COrlGroupBox group;
    COrlRadioButton radio;
    COrlSpinButton spin;
    COrlStatic label;
    const CRect place(10, 10, 110, 50);
    Add("Button", "Button", BS_PUSHBUTTON, place, 1);
    Add("msctls_trackbar32", "", TBS_AUTOTICKS | TBS_ENABLESELRANGE | TBS_BOTH, place, 2);
    Add("Edit", "Edit", WS_BORDER, place, 3);
    Add("Button", "Group", BS_GROUPBOX, place, 4);
    Add("Button", "Radio", BS_RADIOBUTTON, place, 5);
    Add("msctls_updown32", "", UDS_HORZ, place, 6);
    Add("Static", "Static", WS_BORDER, place, 7);
    ASSERT_TRUE(button.AttachButton(1, &parent) && slider.AttachSlider(2, &parent) &&
                edit.AttachEdit(3, &parent) && group.AttachGroupBox(4, &parent) &&
                radio.AttachRadioButton(5, &parent) && spin.AttachSpinButton(6, &parent) &&
                label.AttachStatic(7, &parent));
    button.SetButtonIcon(::LoadIconA(nullptr, IDI_INFORMATION), {32, 32});
    button.SetButtonIcon(::LoadIconA(nullptr, IDI_QUESTION), {32, 32});
    slider.SendMessage(TBM_SETSEL, TRUE, MAKELPARAM(20, 60));
    label.SetUnderline(true);
    label.SetGradientGround(true);
    CWnd* const all[] = {&button, &slider, &edit, &group, &radio, &spin, &label};
    for (BOOL enabled : {TRUE, FALSE}) {
      for (CWnd* control : all) {
        control->EnableWindow(enabled);
        ::SetWindowPos(control->m_hWnd, HWND_TOP, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
        ::RedrawWindow(control->m_hWnd, nullptr, nullptr,
                       RDW_INVALIDATE | RDW_ERASE | RDW_FRAME | RDW_UPDATENOW);
      }
    }
    for (CWnd* control : all) control->DestroyWindow();
  }
};

}  // namespace

TEST_F(ControlLeaks, NoDrawingObjectIsLeftAfterAHundredLives) {
  for (int i = 0; i < 5; ++i) Round();
  const int before = CountGdiObjects();
  ASSERT_GT(before, 0);
  for (int i = 0; i < 100; ++i) Round();
  EXPECT_EQ(CountGdiObjects(), before);
}

TEST_F(ControlLeaks, ALeakWouldBeCounted) {
  const int before = CountGdiObjects();
  const HPEN pen = ::CreatePen(PS_SOLID, 1, RGB(1, 2, 3));
  EXPECT_EQ(CountGdiObjects(), before + 1);
  ::DeleteObject(pen);
  EXPECT_EQ(CountGdiObjects(), before);
}
