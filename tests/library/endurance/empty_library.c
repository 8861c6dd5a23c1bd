// SPDX-License-Identifier: MIT
// A library that needs the same parts of the system as velquin.dll and does nothing with them: what
// a load of it leaves behind is the system's.
#include <windows.h>
#include <winsock2.h>

#include <commctrl.h>
#include <shlobj.h>
#include <stdlib.h>

/// A reference to each part, so that the linker keeps it. @param part 0 to 7
__declspec(dllexport) const void* FunctionOfPart(int part) {
  const void* const functions[] = {
      (const void*)RegCloseKey,      (const void*)InitCommonControls,
      (const void*)DeleteObject,     (const void*)GetTickCount,
      (const void*)malloc,           (const void*)SHGetFolderPathW,
      (const void*)GetDesktopWindow, (const void*)WSAStartup,
  };
  return functions[part];
}

/// In the place of the C runtime's, which would do something.
BOOL WINAPI DllMainCRTStartup(HINSTANCE library, DWORD reason, void* reserved) {
  (void)library;
  (void)reason;
  (void)reserved;
  return TRUE;
}
