// SPDX-License-Identifier: MIT
// CPoint, CSize and CRect: the system's records with the few operations that drawing needs.
// Difference from the documented classes: only these operations. Plain values.
#pragma once

#include "framework/win/windows_base.h"

struct CPoint : POINT {
  CPoint() : POINT{0, 0} {}
  CPoint(LONG initX, LONG initY) : POINT{initX, initY} {}
  CPoint(const POINT& point) : POINT(point) {}
};

struct CSize : SIZE {
  CSize() : SIZE{0, 0} {}
  CSize(LONG width, LONG height) : SIZE{width, height} {}
  CSize(const SIZE& size) : SIZE(size) {}
};

struct CRect : RECT {
  CRect() : RECT{0, 0, 0, 0} {}
  CRect(LONG l, LONG t, LONG r, LONG b) : RECT{l, t, r, b} {}
  CRect(const RECT& rect) : RECT(rect) {}

  bool operator==(const CRect& other) const { return ::EqualRect(this, &other) != FALSE; }
  LONG Width() const { return right - left; }
  LONG Height() const { return bottom - top; }
  CPoint TopLeft() const { return {left, top}; }
  CSize Size() const { return {Width(), Height()}; }
  bool IsRectEmpty() const { return Width() <= 0 || Height() <= 0; }
  bool PtInRect(const POINT& point) const { return ::PtInRect(this, point) != FALSE; }
  void SetRectEmpty() { left = top = right = bottom = 0; }
  void DeflateRect(LONG x, LONG y) { InflateRect(-x, -y); }
  void InflateRect(LONG x, LONG y) { ::InflateRect(this, x, y); }
  void OffsetRect(LONG x, LONG y) { ::OffsetRect(this, x, y); }

  operator RECT*() { return this; }
  operator const RECT*() const { return this; }
};
