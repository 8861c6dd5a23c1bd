// SPDX-License-Identifier: MIT
// The module of the library's resources.
#pragma once

#include "framework/win/windows_base.h"

/// The module that holds this code, and so the dialogs, bitmaps and strings. Any thread.
HINSTANCE AfxGetResourceHandle();

/// The module is being unloaded: do not start anything that would still need its code.
void AfxSetUnloading();
bool AfxIsUnloading();
