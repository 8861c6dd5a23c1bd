// SPDX-License-Identifier: MIT
// COrlGroupBox: a group box in the dark look: a text and an etched frame. The background is the
// dialog's. UI thread only.
#pragma once

#include "framework/win/controls.h"
#include "library/ui/orl_dialog_base.h"

class COrlGroupBox : public CButton, public COrlDialogBase {
 public:
  /// Takes over the parent's control. @return FALSE if it does not exist.
  BOOL AttachGroupBox(UINT id, const CWnd* parent) { return SubclassDlgItem(id, parent); }

 protected:
  DECLARE_MESSAGE_MAP()

  void OnPaint();
  void OnEnable(bool enabled);
  LRESULT OnSetText(WPARAM wParam, LPARAM lParam);

 private:
  CRect PlaceText(CDC& dc, const CString& text) const;
  void RepaintWithGround() const;
};
