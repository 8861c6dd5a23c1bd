// SPDX-License-Identifier: MIT
#include "library/ui/orl_edit.h"

BEGIN_MESSAGE_MAP(COrlEdit, CEdit)
ON_WM_NCPAINT()
END_MESSAGE_MAP()

void COrlEdit::OnNcPaint() {
  Default();
  if (systemLook) return;
  CRect window = GetWindowRect();
  window.OffsetRect(-window.left, -window.top);
  CWindowDC dc(m_hWnd);
  PaintBevel(dc, window, 6);
}
