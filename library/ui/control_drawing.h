// SPDX-License-Identifier: MIT
// Drawing that several dark controls share. UI thread only.
#pragma once

#include "framework/win/dc.h"

/// Returns the font of a control's parent; null (the system's font) if the parent has none.
HFONT ParentFont(HWND control);

/// Draws text over the present background; disabled text is engraved: grey, with a dark shadow one
/// pixel right and down.
/// @param rect in the context's coordinates @param format DT_... bits
void PaintControlText(CDC& dc, const CString& text, const CRect& rect, UINT format, bool enabled);

/// Fills a control with a vertical gradient. Its two colours are those that the parent shows one
/// pixel to the left of the control's top and bottom rows, so that the control seems transparent.
/// @return false, and paints nothing, if the parent shows nothing there.
bool PaintContinuedGround(CDC& dc, HWND control);

/// Copies a part of a bitmap unchanged. @param to upper left corner @param cell in the bitmap
void CopyCell(CDC& dc, CPoint to, const CBitmap& bitmap, const CRect& cell);
