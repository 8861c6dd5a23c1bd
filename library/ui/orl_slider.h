// SPDX-License-Identifier: MIT
// COrlSlider: a trackbar in the dark look that behaves as the system's. UI thread only.
#pragma once

#include "framework/win/controls.h"
#include "library/ui/orl_dialog_base.h"

class COrlSlider : public CSliderCtrl, public COrlDialogBase {
 public:
  /// Takes over the parent's control. @return FALSE if it does not exist.
  BOOL AttachSlider(UINT id, const CWnd* parent) { return SubclassDlgItem(id, parent); }
  /// Sets whether a focus rectangle shows the focus; the default is that it does.
  void ShowFocusRect(bool show) { focusRectangle = show ? 1 : 0; }

 protected:
  DECLARE_MESSAGE_MAP()

  void OnPaint();
  BOOL OnEraseBkgnd(HDC dc);
  void OnLButtonDown(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnCaptureChanged(HWND window);

 private:
  void PaintSlider(CDC& dc);
  bool IsVertical() const;
  CRect LyingChannel() const;
  CRect LyingThumb() const;
  void PaintChannel(CDC& dc);
  void PaintTicks(CDC& dc);
  void PaintTickRow(CDC& dc, LONG edge, int outward);
  void PaintThumb(CDC& dc);

  int32_t thumbPressed = 0;
  int32_t focusRectangle = 1;
};
