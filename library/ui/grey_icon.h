// SPDX-License-Identifier: MIT
// A disabled look for an icon.
#pragma once

#include "framework/win/windows_base.h"

/// Copies an icon in shades between two colours: dark parts take the first, bright parts the
/// second. Transparent parts stay transparent.
/// @return a new icon, owned by the caller; null if there is no icon or it has no colours.
HICON MakeGreyIcon(HICON icon, COLORREF dark, COLORREF bright);
