// SPDX-License-Identifier: MIT
// COrlButton: a push button in the dark look. It subclasses a button of a dialog and makes it
// owner-drawn; it behaves as the system's button. UI thread only.
#pragma once

#include "framework/win/controls.h"
#include "library/ui/colours.h"
#include "library/ui/orl_dialog_base.h"

class COrlButton : public CButton, public COrlDialogBase {
 public:
  ~COrlButton() override;

  /// Takes over the parent's control. @param spare, spareFlag stored, never read
  /// @return FALSE, and changes nothing, if the parent does not have the control.
  BOOL AttachButton(UINT id, const CWnd* parent, int32_t spare, COLORREF normal, COLORREF disabled,
                    COLORREF focused, int32_t spareFlag);
  /// The same, with the colours of the library's dialogs.
  BOOL AttachButton(UINT id, const CWnd* parent) {
    return AttachButton(id, parent, 0, kColourText, kColourDisabledText, kColourFocusedText, 1);
  }

  /// Shows an icon instead of the text. @param icon owned by the caller @param size pixels
  void SetButtonIcon(HICON icon, CSize size);
  /// Draws the button as pressed in every state.
  void SetForcedPressed(bool pressed);

 protected:
  DECLARE_MESSAGE_MAP()

  BOOL OnEraseBkgnd(HDC dc);
  void OnLButtonDblClk(UINT flags, CPoint point);
  void OnKeyDown(UINT key);
  LRESULT OnGetDlgCode(WPARAM wParam, LPARAM lParam);
  void DrawItem(DRAWITEMSTRUCT* request) override;

 private:
  void DrawPushButton(CDC& dc);
  void DrawCheckBox(CDC& dc);
  void DrawButtonText(CDC& dc, CRect rect, COLORREF colour);
  void DrawIconCentred(CDC& dc, HICON icon) const;
  void DeleteDisabledIcon();

  static constexpr int kTextSize = 512;

  char text[kTextSize] = {};  // the window's text, read at each draw
  CRect focusRect;            // the item's rectangle, 4 pixels smaller on every side
  CRect itemRect;
  DRAWITEMSTRUCT* drawRequest = nullptr;  // valid during one draw
  HDC drawDc = nullptr;                   // valid during one draw
  DWORD buttonStyle = 0;                  // low 16 bits of the style
  DWORD fullStyle = 0;
  int32_t iconWidth = 0;   // pixels
  int32_t iconHeight = 0;  // pixels
  int32_t forcedPressed = 0;
  COLORREF focusedText = 0;
  COLORREF normalText = 0;
  int32_t spareValue = 0;
  COLORREF disabledText = 0;
  int32_t spareSwitch = 0;
  HICON disabledIcon = nullptr;  // grey copy; owned
};
