// SPDX-License-Identifier: MIT
// COrlRadioButton: a radio button in the dark look that behaves as the system's. UI thread only.
#pragma once

#include "framework/win/controls.h"
#include "framework/win/gdi_object.h"
#include "library/ui/orl_dialog_base.h"

class COrlRadioButton : public CButton, public COrlDialogBase {
 public:
  COrlRadioButton();

  /// Takes over the parent's control. @return FALSE if it does not exist.
  BOOL AttachRadioButton(UINT id, const CWnd* parent) { return SubclassDlgItem(id, parent); }

 protected:
  DECLARE_MESSAGE_MAP()

  void OnPaint();
  BOOL OnEraseBkgnd(HDC dc);
  void OnEnable(bool enabled);
  void OnSetFocus(HWND before);
  void OnKillFocus(HWND next);
  LRESULT OnStateChange(WPARAM wParam, LPARAM lParam);

 private:
  CRect BoxCell() const;

  CBitmap boxes;  // 2 columns, 3 rows
};
