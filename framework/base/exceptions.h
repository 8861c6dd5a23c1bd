// SPDX-License-Identifier: MIT
// The framework's exceptions that can occur in the driver. Differences from the documented classes:
// they are thrown by value and carry no message. None crosses the library's boundary.
#pragma once

#include "framework/base/types.h"

/// A failure with a system code.
class CAtlException {
 public:
  explicit CAtlException(HRESULT hr) : m_hr(hr) {}
  HRESULT m_hr;  ///< the system's code
};

/// A system resource, for example a lock, is not available; carries the system error as an HRESULT.
class CResourceException : public CAtlException {
 public:
  using CAtlException::CAtlException;
};

/// An argument, such as an array index, was out of range.
class CInvalidArgException : public CAtlException {
 public:
  CInvalidArgException();
};

/// Throws CAtlException with the code.
[[noreturn]] void AtlThrow(HRESULT hr);
/// Throws CInvalidArgException.
[[noreturn]] void AfxThrowInvalidArgException();
/// Throws CResourceException with a system error number, converted to an HRESULT.
[[noreturn]] void AfxThrowResourceException(uint32_t systemError);

/// The code of an invalid argument (E_INVALIDARG).
inline constexpr HRESULT kInvalidArgument = static_cast<HRESULT>(0x80070057u);
