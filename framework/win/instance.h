// SPDX-License-Identifier: MIT
// Where the library's resources are found.
#pragma once

#include "framework/win/windows_base.h"

/// The module that holds this code, and so its dialogs, bitmaps and strings. Any thread.
HINSTANCE AfxGetResourceHandle();

/// The module is being unloaded: nothing may be begun any more that would still need its code.
void AfxSetUnloading();
bool AfxIsUnloading();
