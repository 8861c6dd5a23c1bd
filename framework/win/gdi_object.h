// SPDX-License-Identifier: MIT
// Drawing objects: CPen, CBrush, CFont and CBitmap. Each owns its system object and deletes it.
// Differences from the documented classes: no map from handles to objects; only the objects that
// library/ui/ creates.
#pragma once

#include <utility>

#include "framework/win/windows_base.h"

class CGdiObject {
 public:
  CGdiObject() = default;
  virtual ~CGdiObject() { DeleteObject(); }
  CGdiObject(const CGdiObject&) = delete;
  CGdiObject& operator=(const CGdiObject&) = delete;

  /// Deletes the system object, which must not be selected into a device context.
  BOOL DeleteObject();
  /// Takes ownership. @return FALSE for a null handle.
  BOOL Attach(HGDIOBJ object);
  HGDIOBJ Detach() { return std::exchange(m_hObject, nullptr); }
  HGDIOBJ GetSafeHandle() const { return m_hObject; }

 protected:
  HGDIOBJ m_hObject = nullptr;
};

class CPen : public CGdiObject {
 public:
  CPen(int style, int width, COLORREF colour) { Attach(::CreatePen(style, width, colour)); }
};

class CBrush : public CGdiObject {
 public:
  CBrush() = default;
  explicit CBrush(COLORREF colour) { CreateSolidBrush(colour); }
  BOOL CreateSolidBrush(COLORREF colour) { return Attach(::CreateSolidBrush(colour)); }
  operator HBRUSH() const { return static_cast<HBRUSH>(m_hObject); }
};

class CFont : public CGdiObject {
 public:
  BOOL CreateFontIndirect(const LOGFONTA& font) { return Attach(::CreateFontIndirectA(&font)); }
};

class CBitmap : public CGdiObject {
 public:
  /// @param resourceId of a bitmap of the library
  BOOL LoadBitmap(UINT resourceId);
  /// @return its size in pixels; 0, 0 without a bitmap.
  SIZE GetBitmapSize() const;
  operator HBITMAP() const { return static_cast<HBITMAP>(m_hObject); }
};
