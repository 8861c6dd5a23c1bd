// SPDX-License-Identifier: MIT
#include "framework/win/dc.h"

void CDC::FillSolidRect(const RECT& rect, COLORREF colour) {
  // An opaque text background of no text: fills without making a brush.
  const COLORREF before = SetBkColor(colour);
  ::ExtTextOutA(m_hDC, 0, 0, ETO_OPAQUE, &rect, nullptr, 0, nullptr);
  SetBkColor(before);
}

void CDC::FrameSolidRect(const RECT& rect, COLORREF colour) {
  const CBrush brush(colour);
  ::FrameRect(m_hDC, &rect, brush);
}

int CDC::ExcludeClipRect(const RECT& rect) {
  return ::ExcludeClipRect(m_hDC, rect.left, rect.top, rect.right, rect.bottom);
}

int CDC::IntersectClipRect(const RECT& rect) {
  return ::IntersectClipRect(m_hDC, rect.left, rect.top, rect.right, rect.bottom);
}

int CDC::DrawText(const CString& text, RECT& rect, UINT format) {
  return ::DrawTextA(m_hDC, text.GetString(), text.GetLength(), &rect, format);
}

CSize CDC::GetTextExtent(const char* text, int length) const {
  CSize size;
  ::GetTextExtentPoint32A(m_hDC, text, length, &size);
  return size;
}

TEXTMETRICA CDC::GetTextMetrics() const {
  TEXTMETRICA metrics = {};
  ::GetTextMetricsA(m_hDC, &metrics);
  return metrics;
}
