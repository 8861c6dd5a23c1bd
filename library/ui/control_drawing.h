// SPDX-License-Identifier: MIT
// Drawing that several of the dark controls share. UI thread only.
#pragma once

#include "framework/win/dc.h"

/// The font of a control's parent; null, the system's font, when it was given none.
HFONT ParentFont(HWND control);

/// Draws text on what is there already, engraved when disabled: grey with a dark shadow one pixel
/// right and down.
/// @param rect where, in the context's coordinates @param format DT_... bits
void PaintControlText(CDC& dc, const CString& text, const CRect& rect, UINT format, bool enabled);

/// Fills a control with a vertical gradient between the colours that its parent shows one pixel to
/// the left of the control's top and bottom rows, so that the control seems to have no ground.
/// @return false, and nothing is painted, where the parent shows nothing there.
bool PaintContinuedGround(CDC& dc, HWND control);

/// Copies a part of a bitmap unchanged. @param to upper left corner @param cell in the bitmap
void CopyCell(CDC& dc, CPoint to, const CBitmap& bitmap, const CRect& cell);
