// SPDX-License-Identifier: MIT
// A disabled look for an icon.
#pragma once

#include "framework/win/windows_base.h"

/// Makes a copy of an icon in shades between two colours: its dark parts take the first, its bright
/// parts the second; the transparent parts stay.
/// @return a new icon, owned by the caller; null when there is no icon or it has no colours.
HICON MakeGreyIcon(HICON icon, COLORREF dark, COLORREF bright);
