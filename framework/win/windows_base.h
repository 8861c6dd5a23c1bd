// SPDX-License-Identifier: MIT
// The system's window declarations. Files of framework/win and library/ui include them only through
// this header. It undefines the macros that rename members of the framework's classes.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h first.
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
