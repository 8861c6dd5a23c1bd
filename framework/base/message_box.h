// SPDX-License-Identifier: MIT
// AfxMessageBox: the only way in which the library shows messages to the user. It uses the
// application object, so that all boxes look alike. Any thread; blocks it until the answer.
#pragma once

#include "framework/base/types.h"

#ifndef MB_OK
#define MB_OK 0x00u
#define MB_OKCANCEL 0x01u
#define MB_ICONEXCLAMATION 0x30u
#endif

/// @param prompt text @param type the documented style bits @param helpId unused
/// @return the number of the pressed button.
int AfxMessageBox(LPCSTR prompt, UINT type = MB_OK, UINT helpId = 0);
/// The same with a text from the string table.
int AfxMessageBox(UINT promptId, UINT type = MB_OK, UINT helpId = 0);
