// SPDX-License-Identifier: MIT
#include "framework/win/dc.h"

#include <string>

namespace {

// Drawing reads narrow texts in the code page of the selected font. That is not UTF-8 if UTF-8 is
// the code page of this process only, so such texts are passed as wide texts.
bool TextsAreUtf8() {
  return ::GetACP() == CP_UTF8;
}

std::wstring WideFromUtf8(const char* text, int length) {
  std::wstring wide(static_cast<size_t>(length), L'\0');  // the text has at most that many units
  const int size = ::MultiByteToWideChar(CP_UTF8, 0, text, length, wide.data(), length);
  wide.resize(static_cast<size_t>(size));
  return wide;
}

}  // namespace

void CDC::FillSolidRect(const RECT& rect, COLORREF colour) {
  // Draws an empty text with an opaque background: fills without creating a brush.
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
  if (TextsAreUtf8()) {
    const std::wstring wide = WideFromUtf8(text.GetString(), text.GetLength());
    return ::DrawTextW(m_hDC, wide.c_str(), static_cast<int>(wide.size()), &rect, format);
  }
  return ::DrawTextA(m_hDC, text.GetString(), text.GetLength(), &rect, format);
}

CSize CDC::GetTextExtent(const char* text, int length) const {
  CSize size;
  if (TextsAreUtf8()) {
    const std::wstring wide = WideFromUtf8(text, length);
    ::GetTextExtentPoint32W(m_hDC, wide.c_str(), static_cast<int>(wide.size()), &size);
    return size;
  }
  ::GetTextExtentPoint32A(m_hDC, text, length, &size);
  return size;
}

TEXTMETRICA CDC::GetTextMetrics() const {
  TEXTMETRICA metrics = {};
  ::GetTextMetricsA(m_hDC, &metrics);
  return metrics;
}
