// SPDX-License-Identifier: MIT
// Device contexts: CDC wraps one that it does not own; the derived classes own theirs for a block.
// Differences from the documented classes: objects are selected by handle, so there are no
// temporary objects; only the drawing calls that library/ui/ uses. UI thread only.
#pragma once

#include "framework/base/cstring.h"
#include "framework/win/gdi_object.h"
#include "framework/win/geometry.h"

class CDC {
 public:
  explicit CDC(HDC dc) : m_hDC(dc) {}
  virtual ~CDC() = default;
  CDC(const CDC&) = delete;
  CDC& operator=(const CDC&) = delete;

  HDC GetSafeHdc() const { return m_hDC; }

  /// @return the previous object. Select it again before deleting the object.
  HGDIOBJ SelectObject(HGDIOBJ object) { return ::SelectObject(m_hDC, object); }
  int SetBkMode(int mode) { return ::SetBkMode(m_hDC, mode); }
  COLORREF SetBkColor(COLORREF colour) { return ::SetBkColor(m_hDC, colour); }
  COLORREF SetTextColor(COLORREF colour) { return ::SetTextColor(m_hDC, colour); }

  void FillSolidRect(const RECT& rect, COLORREF colour);
  /// A frame one pixel wide, just inside the rectangle.
  void FrameSolidRect(const RECT& rect, COLORREF colour);
  void FillRect(const RECT& rect, HBRUSH brush) { ::FillRect(m_hDC, &rect, brush); }
  void Polyline(const POINT* points, int count) { ::Polyline(m_hDC, points, count); }
  void MoveTo(int x, int y) { ::MoveToEx(m_hDC, x, y, nullptr); }
  void LineTo(int x, int y) { ::LineTo(m_hDC, x, y); }
  COLORREF GetPixel(int x, int y) const { return ::GetPixel(m_hDC, x, y); }
  COLORREF SetPixel(int x, int y, COLORREF colour) { return ::SetPixel(m_hDC, x, y, colour); }
  void DrawFocusRect(const RECT& rect) { ::DrawFocusRect(m_hDC, &rect); }
  int ExcludeClipRect(const RECT& rect);
  int IntersectClipRect(const RECT& rect);
  int SaveDC() { return ::SaveDC(m_hDC); }
  BOOL RestoreDC(int saved) { return ::RestoreDC(m_hDC, saved); }
  int DrawText(const CString& text, RECT& rect, UINT format);
  CSize GetTextExtent(const char* text, int length) const;
  TEXTMETRICA GetTextMetrics() const;
  void BitBlt(int x, int y, int width, int height, const CDC& source, int sourceX, int sourceY) {
    ::BitBlt(m_hDC, x, y, width, height, source.m_hDC, sourceX, sourceY, SRCCOPY);
  }

 protected:
  HDC m_hDC;
};

/// Paints the invalid part of a window; for WM_PAINT.
class CPaintDC : public CDC {
 public:
  explicit CPaintDC(HWND window) : CDC(nullptr), m_hWnd(window) {
    m_hDC = ::BeginPaint(window, &m_ps);
  }
  ~CPaintDC() override { ::EndPaint(m_hWnd, &m_ps); }

  PAINTSTRUCT m_ps = {};

 private:
  HWND m_hWnd;
};

/// Draws into the client area.
class CClientDC : public CDC {
 public:
  explicit CClientDC(HWND window) : CDC(::GetDC(window)), m_hWnd(window) {}
  ~CClientDC() override { ::ReleaseDC(m_hWnd, m_hDC); }

 private:
  HWND m_hWnd;
};

/// Draws into the whole window, frame included; its origin is the window's corner.
class CWindowDC : public CDC {
 public:
  explicit CWindowDC(HWND window) : CDC(::GetWindowDC(window)), m_hWnd(window) {}
  ~CWindowDC() override { ::ReleaseDC(m_hWnd, m_hDC); }

 private:
  HWND m_hWnd;
};

/// Draws into memory, in the format of another context.
class CMemoryDC : public CDC {
 public:
  explicit CMemoryDC(const CDC& like) : CDC(::CreateCompatibleDC(like.GetSafeHdc())) {}
  ~CMemoryDC() override { ::DeleteDC(m_hDC); }
};

/// Keeps an object selected until the end of the block.
class CSelectedObject {
 public:
  CSelectedObject(CDC& dc, HGDIOBJ object) : m_dc(dc), m_previous(dc.SelectObject(object)) {}
  ~CSelectedObject() { m_dc.SelectObject(m_previous); }
  CSelectedObject(const CSelectedObject&) = delete;
  CSelectedObject& operator=(const CSelectedObject&) = delete;

 private:
  CDC& m_dc;
  HGDIOBJ m_previous;
};
