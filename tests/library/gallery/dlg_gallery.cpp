// SPDX-License-Identifier: MIT
#include "tests/library/gallery/dlg_gallery.h"

#include "tests/library/gallery/gallery_ids.h"

namespace {

constexpr COLORREF kBandBottom = RGB(20, 60, 60);
constexpr COLORREF kBandTop = RGB(70, 50, 90);
// Where the dialog has a gradient for its ground, in dialog units.
constexpr RECT kBands[] = {{110, 90, 206, 118}, {214, 202, 324, 232}};

// A control that is not told when it loses the mouse, so that it stays as it was pressed.
template <typename Control>
class CStaysPressed : public Control {
 protected:
  LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override {
    return message == WM_CAPTURECHANGED ? 0 : Control::WindowProc(message, wParam, lParam);
  }
};

// Holds the left mouse button down on a control, as far as the control can tell.
void Press(const CWnd& control, CPoint point) {
  control.SendMessage(WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(point.x, point.y));
  ::ReleaseCapture();
}

}  // namespace

BEGIN_MESSAGE_MAP(CDlgGallery, COrlDialog)
ON_WM_ERASEBKGND()
END_MESSAGE_MAP()

CDlgGallery::CDlgGallery() : COrlDialog(IDD_GALLERY, nullptr) {}

BOOL CDlgGallery::OnInitDialog() {
  COrlDialog::OnInitDialog();
  AttachButtons();
  AttachRadioButtons();
  AttachEditsAndSpins();
  AttachSliders();
  AttachStatics();
  AttachGroups();
  ::SetFocus(GetDlgItem(IDC_BUTTON_FOCUSED));
  return FALSE;
}

void CDlgGallery::AttachButtons() {
  for (UINT id = IDC_BUTTON_NORMAL; id <= IDC_BUTTON_ICON_DISABLED; ++id) {
    auto& button = New<COrlButton>();
    button.AttachButton(id, this);
    if (id == IDC_BUTTON_FORCED || id == IDC_BUTTON_FORCED_DISABLED) button.SetForcedPressed(true);
    if (id == IDC_BUTTON_PUSHED) button.SendMessage(BM_SETSTATE, TRUE);
    if (id == IDC_BUTTON_ICON || id == IDC_BUTTON_ICON_DISABLED) {
      button.SetButtonIcon(::LoadIconA(nullptr, IDI_INFORMATION), {32, 32});
    }
  }
}

void CDlgGallery::AttachRadioButtons() {
  for (UINT id = IDC_RADIO_OFF; id <= IDC_RADIO_GRADIENT; ++id) {
    auto& radio = New<COrlRadioButton>();
    radio.AttachRadioButton(id, this);
    if (id == IDC_RADIO_ON || id == IDC_RADIO_DISABLED_ON || id == IDC_RADIO_GRADIENT) {
      radio.SendMessage(BM_SETCHECK, BST_CHECKED);
    }
    if (id == IDC_RADIO_PUSHED) radio.SendMessage(BM_SETSTATE, TRUE);
  }
}

void CDlgGallery::AttachEditsAndSpins() {
  for (UINT id = IDC_EDIT_NORMAL; id <= IDC_EDIT_DISABLED; ++id)
    New<COrlEdit>().AttachEdit(id, this);
  for (UINT id = IDC_SPIN_NORMAL; id <= IDC_SPIN_LYING_DISABLED; ++id) {
    auto& spin = New<CStaysPressed<COrlSpinButton>>();
    spin.AttachSpinButton(id, this);
    if (id == IDC_SPIN_PRESSED || id == IDC_SPIN_LYING_PRESSED) Press(spin, {3, 3});
  }
}

void CDlgGallery::AttachSliders() {
  for (UINT id = IDC_SLIDER_TOP; id <= IDC_SLIDER_VERTICAL_SELECTION; ++id) {
    auto& slider = New<CStaysPressed<COrlSlider>>();
    slider.AttachSlider(id, this);
    slider.SetTicFreq(1);
    slider.SetRange(0, 8, TRUE);
    slider.SetPos(5);
    slider.SendMessage(TBM_SETSEL, TRUE, MAKELPARAM(2, 6));
    if (id == IDC_SLIDER_PRESSED) Press(slider, slider.GetThumbRect().TopLeft());
  }
}

void CDlgGallery::AttachStatics() {
  for (UINT id = IDC_STATIC_PLAIN; id <= IDC_STATIC_FORCED_PLAIN; ++id) {
    auto& text = New<COrlStatic>();
    text.AttachStatic(id, this);
    text.SetUnderline(id == IDC_STATIC_UNDERLINED);
    text.SetGradientGround(id >= IDC_STATIC_GRADIENT);
    text.SetPlainGround(id == IDC_STATIC_FORCED_PLAIN);
  }
}

void CDlgGallery::AttachGroups() {
  for (UINT id = IDC_GROUP_LEFT; id <= IDC_GROUP_STATICS; ++id) {
    New<COrlGroupBox>().AttachGroupBox(id, this);
  }
}

BOOL CDlgGallery::OnEraseBkgnd(HDC handle) {
  CDC dc(handle);
  PaintPlain(dc, GetClientRect());
  for (RECT band : kBands) {
    ::MapDialogRect(m_hWnd, &band);
    PaintGradient(dc, band, kBandBottom, kBandTop, GradientDirection::kVertical);
  }
  return TRUE;
}
