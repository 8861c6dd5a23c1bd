// SPDX-License-Identifier: MIT
#include "framework/win/gdi_object.h"

#include "framework/win/instance.h"

BOOL CGdiObject::DeleteObject() {
  HGDIOBJ object = Detach();
  return object == nullptr ? FALSE : ::DeleteObject(object);
}

BOOL CGdiObject::Attach(HGDIOBJ object) {
  DeleteObject();
  m_hObject = object;
  return object != nullptr;
}

BOOL CBitmap::LoadBitmap(UINT resourceId) {
  return Attach(::LoadBitmapA(AfxGetResourceHandle(), MAKEINTRESOURCEA(resourceId)));
}

SIZE CBitmap::GetBitmapSize() const {
  BITMAP bitmap = {};
  ::GetObjectA(m_hObject, sizeof bitmap, &bitmap);
  return {bitmap.bmWidth, bitmap.bmHeight};
}
