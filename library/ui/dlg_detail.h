// SPDX-License-Identifier: MIT
// CDlgDetail: shows what the driver last read from the controller: version, clock and site. Modal,
// opened by the hand controller; sends nothing. UI thread only.
#pragma once

#include "framework/base/cstring.h"
#include "library/ui/orl_button.h"
#include "library/ui/orl_dialog.h"
#include "library/ui/orl_edit.h"

class CTelescope;

class CDlgDetail : public COrlDialog {
 public:
  explicit CDlgDetail(HWND parent);

  /// Sets the source of the texts; call before DoModal. @param newEngine not owned; null: empty
  /// lines
  void SetEngine(CTelescope* newEngine) { engine = newEngine; }

 protected:
  DECLARE_MESSAGE_MAP()

  void DoDataExchange(CDataExchange* exchange) override;
  BOOL OnInitDialog() override;

 private:
  void BuildLines();

  CString line1;
  CString line2;
  CString line3;
  CTelescope* engine = nullptr;
  COrlEdit edit1;
  COrlEdit edit2;
  COrlEdit edit3;
  COrlButton closeButton;
};
