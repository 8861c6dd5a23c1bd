// SPDX-License-Identifier: MIT
#include "library/ui/orl_static.h"

#include "library/ui/control_drawing.h"

BEGIN_MESSAGE_MAP(COrlStatic, CStatic)
ON_WM_PAINT()
ON_WM_ENABLE()
ON_WM_ERASEBKGND()
ON_WM_NCPAINT()
ON_MESSAGE(WM_SETTEXT, OnSetText)
END_MESSAGE_MAP()

void COrlStatic::SetGradientGround(bool gradient) {
  Change(gradientGround, gradient);
}

void COrlStatic::SetPlainGround(bool plain) {
  Change(plainGround, plain);
}

void COrlStatic::SetUnderline(bool underlined) {
  Change(underline, underlined);
}

void COrlStatic::Change(int32_t& flag, bool value) const {
  flag = value ? 1 : 0;
  if (m_hWnd != nullptr) Invalidate();
}

void COrlStatic::OnPaint() {
  if (systemLook) {
    Default();
    return;
  }
  CPaintDC dc(m_hWnd);
  PaintGround(dc);
  CFont font;
  font.CreateFontIndirect(TextFont());
  const CSelectedObject selected(dc, font.GetSafeHandle());
  PaintControlText(dc, GetWindowText(), GetClientRect(), TextFormat(), IsWindowEnabled());
}

void COrlStatic::PaintGround(CDC& dc) const {
  const bool continued = gradientGround && !plainGround && PaintContinuedGround(dc, m_hWnd);
  if (!continued) PaintPlain(dc, GetClientRect());
}

// The parent's font, underlined on request.
LOGFONTA COrlStatic::TextFont() const {
  HGDIOBJ parentFont = ParentFont(m_hWnd);
  if (parentFont == nullptr) parentFont = ::GetStockObject(SYSTEM_FONT);
  LOGFONTA font = {};
  ::GetObjectA(parentFont, sizeof font, &font);
  font.lfUnderline = underline ? TRUE : FALSE;
  return font;
}

UINT COrlStatic::TextFormat() const {
  const DWORD style = GetStyle();
  UINT format = DT_LEFT;
  if (style & SS_CENTER) {
    format = DT_CENTER;
  } else if (style & SS_RIGHT) {
    format = DT_RIGHT;
  }
  if (style & SS_NOPREFIX) format |= DT_NOPREFIX;
  return format | ((style & SS_CENTERIMAGE) ? DT_VCENTER | DT_SINGLELINE : DT_WORDBREAK);
}

BOOL COrlStatic::OnEraseBkgnd(HDC handle) {
  if (systemLook) return static_cast<BOOL>(Default());
  CDC dc(handle);
  PaintGround(dc);
  return TRUE;
}

void COrlStatic::OnEnable(bool) {
  Default();
  Invalidate();
}

// The system draws a new text at once, without a paint message; this paints over it.
LRESULT COrlStatic::OnSetText(WPARAM, LPARAM) {
  const LRESULT result = Default();
  Invalidate();
  return result;
}

// A border can be wider than the bevel; the system's border would show inside it.
void COrlStatic::OnNcPaint() {
  if (systemLook) {
    Default();
    return;
  }
  const CRect window = GetWindowRect();
  CRect whole(0, 0, window.Width(), window.Height());
  CRect client = GetClientRect();
  ::MapWindowPoints(m_hWnd, nullptr, reinterpret_cast<POINT*>(&client), 2);
  client.OffsetRect(-window.left, -window.top);
  CWindowDC dc(m_hWnd);
  const int all = dc.SaveDC();
  dc.ExcludeClipRect(client);
  PaintPlain(dc, whole);
  dc.RestoreDC(all);
  PaintBevel(dc, whole, 5);
}
