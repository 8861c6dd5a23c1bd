// SPDX-License-Identifier: MIT
// Picture: pixels to look at, drawn by the test or taken from a window. UI thread only.
#pragma once

#include <cstdint>
#include <ostream>
#include <vector>

#include "framework/win/dc.h"

/// A colour that says what it is when a test fails.
struct Colour {
  Colour(int red, int green, int blue)
      : value(RGB(static_cast<BYTE>(red), static_cast<BYTE>(green), static_cast<BYTE>(blue))) {}
  explicit Colour(COLORREF colour) : value(colour) {}
  bool operator==(const Colour&) const = default;

  COLORREF value;
};
std::ostream& operator<<(std::ostream& stream, const Colour& colour);

/// What a picture shows where nobody has painted.
inline const Colour kUntouched(255, 0, 255);

class Picture {
 public:
  Picture(int width, int height);
  /// What a window shows, painted anew before. @param frame the whole window or its inside only
  static Picture OfClient(HWND window) { return Picture(window, false); }
  static Picture OfWindow(HWND window) { return Picture(window, true); }
  ~Picture();
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;

  CDC& Dc() { return *dc; }
  Colour At(LONG x, LONG y) const;
  CSize Size() const { return size; }
  CRect Rect() const { return {0, 0, size.cx, size.cy}; }

  /// The smallest rectangle around every pixel of a colour; empty when there is none.
  CRect Around(Colour colour) const { return Around(colour, Rect()); }
  CRect Around(Colour colour, const CRect& part) const;
  int Count(Colour colour) const { return Count(colour, Rect()); }
  int Count(Colour colour, const CRect& part) const;

 private:
  Picture(HWND window, bool frame);
  void Make();

  CSize size;
  HDC memory = nullptr;
  HBITMAP bitmap = nullptr;
  HGDIOBJ before = nullptr;
  uint32_t* pixels = nullptr;
  CDC* dc = nullptr;
};
