// SPDX-License-Identifier: MIT
// COrlSpinButton: a pair of arrows (an up-down control) in the dark look that behaves as the
// system's. UI thread only.
#pragma once

#include "framework/win/controls.h"
#include "framework/win/gdi_object.h"
#include "library/ui/orl_dialog_base.h"

class COrlSpinButton : public CSpinButtonCtrl, public COrlDialogBase {
 public:
  COrlSpinButton();

  /// Takes over the parent's control. @return FALSE if it does not exist.
  BOOL AttachSpinButton(UINT id, const CWnd* parent) { return SubclassDlgItem(id, parent); }

 protected:
  DECLARE_MESSAGE_MAP()

  void OnPaint();
  void OnLButtonDown(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnMouseMove(UINT flags, CPoint point);
  void OnCancelMode();
  void OnCaptureChanged(HWND window);

 private:
  static constexpr int kNoArrow = -1;
  static constexpr int kArrows = 2;  // up or left, down or right

  bool IsHorizontal() const;
  CRect ArrowRect(int arrow) const;
  int ArrowAt(CPoint point) const;
  void PaintArrow(CDC& dc, int arrow);
  void SetPressed(int arrow);
  void LetGo();

  CBitmap arrows;               // 2 columns, 3 rows
  int heldArrow = kNoArrow;     // the arrow on which the mouse button went down
  int pressedArrow = kNoArrow;  // drawn pressed: held, with the pointer over it
};
