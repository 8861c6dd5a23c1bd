// SPDX-License-Identifier: MIT
// A disabled look for an icon.
#pragma once

#include "framework/win/geometry.h"

/// Makes a copy of an icon in shades between two colours: its dark parts take the first, its bright
/// parts the second; the transparent parts stay. @param size pixels
/// @return a new icon, owned by the caller; null when there is no icon.
HICON MakeGreyIcon(HICON icon, CSize size, COLORREF dark, COLORREF bright);
