// SPDX-License-Identifier: MIT
#include "framework/base/exceptions.h"

CInvalidArgException::CInvalidArgException() : CAtlException(kInvalidArgument) {}

void AtlThrow(HRESULT hr) {
  throw CAtlException(hr);
}

void AfxThrowInvalidArgException() {
  throw CInvalidArgException();
}

void AfxThrowResourceException(uint32_t systemError) {
  // A system error becomes an HRESULT of the Windows facility (7) with the failure bit.
  const uint32_t code = systemError == 0 ? 0 : (systemError & 0xFFFFu) | 0x80070000u;
  throw CResourceException(static_cast<HRESULT>(code));
}
