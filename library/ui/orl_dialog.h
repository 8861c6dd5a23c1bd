// SPDX-License-Identifier: MIT
// COrlDialog: a dialog in the dark look, with a caption and frame that the library paints itself.
// UI thread only.
#pragma once

#include "framework/win/dialog.h"
#include "library/ui/orl_dialog_base.h"
#include "library/ui/paint_caption.h"

class COrlDialog : public CDialog, public COrlDialogBase {
 public:
  /// @param templateId resource number @param parent the owner's window; may be null
  COrlDialog(UINT templateId, HWND parent);

  using CDialog::Create;
  /// Creates the dialog modeless, with the template and parent of the constructor.
  BOOL Create();

 protected:
  DECLARE_MESSAGE_MAP()

  BOOL OnInitDialog() override;
  void DoDataExchange(CDataExchange* exchange) override;
  HBRUSH OnCtlColor(CDC& dc, HWND control, UINT kind) override;
  void OnNcPaint();
  BOOL OnNcActivate(bool active);
  LRESULT OnNcCalcSize(WPARAM wParam, LPARAM lParam);
  LRESULT OnNcHitTest(CPoint screen);
  void OnNcMouseMove(UINT hit, CPoint screen);
  LRESULT OnNcMouseLeave(WPARAM wParam, LPARAM lParam);
  LRESULT OnNcMouseHover(WPARAM wParam, LPARAM lParam);
  void OnNcLButtonDown(UINT hit, CPoint screen);
  void OnNcLButtonUp(UINT hit, CPoint screen);
  LRESULT OnNcLButtonDblClk(WPARAM wParam, LPARAM lParam);
  void OnMouseMove(UINT flags, CPoint point);
  void OnLButtonUp(UINT flags, CPoint point);
  void OnCaptureChanged(HWND window);

  CPaintCaption caption;

 private:
  LRESULT CaptionHit(CPoint client);

  const UINT ownTemplate;
  const HWND ownParent;
};
