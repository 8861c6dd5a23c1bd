// SPDX-License-Identifier: MIT
// The system's window declarations, the one way in which files of framework/win and ui include
// them. Its macros that rename members of the framework's classes are taken back.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#undef LoadString
#undef GetClassName
#undef DrawText
#undef GetMessage
#undef LoadBitmap
#undef SendMessage
#undef PostMessage
#undef SetWindowText
#undef GetWindowText
#undef GetTextMetrics
#undef DefWindowProc
#undef CreateFontIndirect
#undef SendDlgItemMessage
