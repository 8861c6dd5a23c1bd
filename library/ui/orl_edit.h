// SPDX-License-Identifier: MIT
// COrlEdit: an edit control with an engraved frame. The dialog sets its colours. UI thread only.
#pragma once

#include "framework/win/controls.h"
#include "library/ui/orl_dialog_base.h"

class COrlEdit : public CEdit, public COrlDialogBase {
 public:
  /// Takes over the parent's control. @return FALSE if it does not exist.
  BOOL AttachEdit(UINT id, const CWnd* parent) { return SubclassDlgItem(id, parent); }

 protected:
  DECLARE_MESSAGE_MAP()

  void OnNcPaint();
};
