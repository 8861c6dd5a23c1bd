// SPDX-License-Identifier: MIT
// The colours that the dark dialogs and controls share.
#pragma once

#include "framework/win/windows_base.h"

inline constexpr COLORREF kColourBlack = RGB(0, 0, 0);
inline constexpr COLORREF kColourDark = RGB(34, 34, 34);  // backgrounds of dialogs and controls
inline constexpr COLORREF kColourText = RGB(180, 180, 180);
inline constexpr COLORREF kColourDisabledText = RGB(107, 107, 107);
inline constexpr COLORREF kColourFocusedText = RGB(0, 182, 157);
inline constexpr COLORREF kColourEngravedShadow = RGB(20, 20, 20);  // below disabled text
