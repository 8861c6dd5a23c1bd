// SPDX-License-Identifier: MIT
#include "library/ui/orl_button.h"

#include "framework/base/message_box.h"
#include "library/ui/grey_icon.h"

namespace {

// Bottom and top colour of a push button's background.
struct Ground {
  COLORREF bottom;
  COLORREF top;
};

// The most important state comes first: a pressed button is usually focused too.
Ground GroundOfState(UINT state) {
  if (state & ODS_SELECTED) return {RGB(91, 71, 71), RGB(105, 85, 85)};
  if (state & ODS_FOCUS) return {RGB(58, 52, 52), RGB(72, 67, 67)};
  if (state & ODS_DISABLED) return {RGB(45, 45, 45), RGB(47, 47, 47)};
  return {RGB(23, 23, 23), RGB(37, 37, 37)};
}

constexpr COLORREF kCheckBoxGround = RGB(128, 120, 136);

}  // namespace

BEGIN_MESSAGE_MAP(COrlButton, CButton)
ON_WM_ERASEBKGND()
ON_WM_LBUTTONDBLCLK()
ON_WM_KEYDOWN()
ON_MESSAGE(WM_GETDLGCODE, OnGetDlgCode)
END_MESSAGE_MAP()

COrlButton::~COrlButton() {
  DeleteDisabledIcon();
}

BOOL COrlButton::AttachButton(UINT id, const CWnd* parent, int32_t spare, COLORREF normal,
                              COLORREF disabled, COLORREF focused, int32_t spareFlag) {
  if (!SubclassDlgItem(id, parent)) return FALSE;
  if (systemLook) {
    ModifyStyle(BS_OWNERDRAW, 0);
    return TRUE;
  }
  ModifyStyle(0, BS_OWNERDRAW);
  spareValue = spare;
  normalText = normal;
  disabledText = disabled;
  focusedText = focused;
  spareSwitch = spareFlag;
  return TRUE;
}

void COrlButton::SetButtonIcon(HICON icon, CSize size) {
  ModifyStyle(0, BS_ICON);
  SetIcon(icon);
  iconWidth = size.cx;
  iconHeight = size.cy;
  DeleteDisabledIcon();
  disabledIcon = MakeGreyIcon(icon, disabledText, normalText);
  Invalidate();
}

void COrlButton::SetForcedPressed(bool pressed) {
  forcedPressed = pressed ? 1 : 0;
  Invalidate();
}

// The drawing covers everything; erasing first would flicker.
BOOL COrlButton::OnEraseBkgnd(HDC) {
  return TRUE;
}

// Makes two quick clicks two presses.
void COrlButton::OnLButtonDblClk(UINT flags, CPoint point) {
  SendMessage(WM_LBUTTONDOWN, flags, MAKELPARAM(point.x, point.y));
}

void COrlButton::OnKeyDown(UINT key) {
  if (key == VK_RETURN && ::GetFocus() == m_hWnd) {
    ::PostMessageA(GetParent(), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(), BN_CLICKED),
                   reinterpret_cast<LPARAM>(m_hWnd));
    return;
  }
  Default();
}

// A modal dialog would otherwise give Enter to its default button while another one has the focus.
LRESULT COrlButton::OnGetDlgCode(WPARAM, LPARAM lParam) {
  const auto* message = reinterpret_cast<const MSG*>(lParam);
  const bool isEnter =
      message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_RETURN;
  return Default() | (isEnter ? DLGC_WANTMESSAGE : 0);
}

void COrlButton::DrawItem(DRAWITEMSTRUCT* request) {
  drawRequest = request;
  drawDc = request->hDC;
  itemRect = focusRect = CRect(request->rcItem);
  focusRect.DeflateRect(4, 4);
  fullStyle = GetStyle();
  buttonStyle = fullStyle & 0xFFFF;
  ::GetWindowTextA(m_hWnd, text, kTextSize);
  CDC dc(drawDc);
  if (buttonStyle & 1) {
    DrawPushButton(dc);
  } else if (buttonStyle & 2) {
    DrawCheckBox(dc);
  }
  drawRequest = nullptr;
  drawDc = nullptr;
}

void COrlButton::DrawPushButton(CDC& dc) {
  const HICON icon = (fullStyle & BS_ICON) ? GetIcon() : nullptr;
  const UINT state = drawRequest->itemState | (forcedPressed ? ODS_SELECTED : 0);
  if (fullStyle & BS_FLAT) {
    PaintPlain(dc, itemRect);
    dc.FrameSolidRect(itemRect, kColourBlack);
  } else {
    const Ground ground = GroundOfState(state);
    PaintGradient(dc, itemRect, ground.bottom, ground.top, GradientDirection::kVertical);
    PaintBevel(dc, itemRect, 4);
  }
  const bool disabled = (state & ODS_DISABLED) != 0;
  if (const HICON shown = disabled ? disabledIcon : icon; icon != nullptr && shown != nullptr) {
    DrawIconCentred(dc, shown);
    return;
  }
  const COLORREF enabledText = (state & ODS_FOCUS) ? focusedText : normalText;
  DrawButtonText(dc, itemRect, disabled ? disabledText : enabledText);
}

// No button of the library gets here, because the owner-drawn style has bit 0 set. The look and its
// two messages are still part of the class family.
void COrlButton::DrawCheckBox(CDC& dc) {
  AfxMessageBox("checkbox.");
  const UINT state = drawRequest->itemState;
  const bool focused = (state & ODS_FOCUS) != 0;
  const bool checked = GetCheck() != 0;
  PaintGradient(dc, itemRect, kColourBlack, kCheckBoxGround, GradientDirection::kHorizontal);
  dc.FrameSolidRect(itemRect, kColourBlack);
  CRect textRect = itemRect;
  if (focused && (state & ODS_SELECTED)) {
    const COLORREF first = checked ? RGB(0, 128, 0) : kColourBlack;
    const COLORREF second = checked ? RGB(0, 255, 0) : kCheckBoxGround;
    PaintGradient(dc, itemRect, first, second, GradientDirection::kHorizontal);
    PaintBevel(dc, itemRect, 7);
    textRect.OffsetRect(1, 1);
    if (checked) AfxMessageBox("checked.");
  }
  if (focused) dc.DrawFocusRect(focusRect);
  DrawButtonText(dc, textRect, focused ? focusedText : normalText);
}

void COrlButton::DrawButtonText(CDC& dc, CRect rect, COLORREF colour) {
  dc.SetBkMode(TRANSPARENT);
  dc.SetTextColor(colour);
  dc.DrawText(CString(text), rect, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
}

void COrlButton::DrawIconCentred(CDC& dc, HICON icon) const {
  const int x = itemRect.left + (itemRect.Width() - iconWidth) / 2;
  const int y = itemRect.top + (itemRect.Height() - iconHeight) / 2;
  ::DrawIconEx(dc.GetSafeHdc(), x, y, icon, iconWidth, iconHeight, 0, nullptr, DI_NORMAL);
}

void COrlButton::DeleteDisabledIcon() {
  if (disabledIcon != nullptr) ::DestroyIcon(disabledIcon);
  disabledIcon = nullptr;
}
