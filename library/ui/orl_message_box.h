// SPDX-License-Identifier: MIT
// COrlMessageBox: the library's message box in the dark look. It runs modally on the calling thread
// and replaces the system's box for every message of the library.
#pragma once

#include <array>
#include <vector>

#include "framework/base/cstring.h"
#include "library/ui/orl_button.h"
#include "library/ui/orl_dialog.h"

class COrlMessageBox : public COrlDialog {
 public:
  /// @param parent the owner's window; may be null @param message text; "
  /// " breaks lines
  /// @param style the system's message-box style bits
  COrlMessageBox(HWND parent, LPCSTR message, UINT style);

  /// Runs the box. @return 1 OK, 2 cancel, 6 yes, 7 no; 2 if it closed without an answer.
  INT_PTR DoModal() override;

 protected:
  DECLARE_MESSAGE_MAP()

  BOOL OnInitDialog() override;
  void OnOK() override;
  void OnCancel() override;
  void OnThirdButton();
  LRESULT OnHelp(WPARAM wParam, LPARAM lParam);
  void OnShowWindow(bool shown, UINT status);

 private:
  void ShowIcon() const;
  void LabelButtons();
  void CentreButtons() const;
  void SizeToText();
  void MoveButtons(LONG x, LONG y) const;
  bool IsYesNo() const;
  void Answer(int32_t button);
  CRect ControlRect(UINT id) const;

  int32_t result = IDOK;
  bool answered = false;
  CString text;
  UINT type;
  std::array<COrlButton, 3> buttons;
  int buttonCount = 1;
};
