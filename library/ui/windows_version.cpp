// SPDX-License-Identifier: MIT
#include "library/ui/windows_version.h"

#include "framework/win/windows_base.h"

bool IsWindows8OrLater() {
  OSVERSIONINFOEXW wanted = {};
  wanted.dwOSVersionInfoSize = sizeof wanted;
  wanted.dwMajorVersion = 6;
  wanted.dwMinorVersion = 2;
  DWORDLONG conditions = 0;
  conditions = ::VerSetConditionMask(conditions, VER_MAJORVERSION, VER_GREATER_EQUAL);
  conditions = ::VerSetConditionMask(conditions, VER_MINORVERSION, VER_GREATER_EQUAL);
  conditions = ::VerSetConditionMask(conditions, VER_SERVICEPACKMAJOR, VER_GREATER_EQUAL);
  return ::VerifyVersionInfoW(&wanted, VER_MAJORVERSION | VER_MINORVERSION | VER_SERVICEPACKMAJOR,
                              conditions) != FALSE;
}
