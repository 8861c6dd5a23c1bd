// SPDX-License-Identifier: MIT
// COrlStatic: a static text in the dark look. UI thread only.
#pragma once

#include "framework/win/controls.h"
#include "library/ui/orl_dialog_base.h"

class COrlStatic : public CStatic, public COrlDialogBase {
 public:
  /// Takes over the parent's control. @return FALSE if it does not exist.
  BOOL AttachStatic(UINT id, const CWnd* parent) { return SubclassDlgItem(id, parent); }

  /// Continues the colours beside the control in its background; the default is a plain one.
  void SetGradientGround(bool gradient);
  /// Makes the background plain and overrides SetGradientGround.
  void SetPlainGround(bool plain);
  void SetUnderline(bool underlined);

 protected:
  DECLARE_MESSAGE_MAP()

  void OnPaint();
  BOOL OnEraseBkgnd(HDC dc);
  void OnEnable(bool enabled);
  void OnNcPaint();
  LRESULT OnSetText(WPARAM wParam, LPARAM lParam);

 private:
  void PaintGround(CDC& dc) const;
  LOGFONTA TextFont() const;
  UINT TextFormat() const;
  void Change(int32_t& flag, bool value) const;

  int32_t gradientGround = 0;
  int32_t underline = 0;
  int32_t plainGround = 0;
};
