// SPDX-License-Identifier: MIT
// COrlDialogBase: the dark look's brushes, control colours and shared drawing. A second base class
// of every dark dialog and control. UI thread only.
#pragma once

#include "framework/win/dc.h"

class COrlDialogBase {
 public:
  enum class GradientDirection { kHorizontal, kVertical };

  COrlDialogBase();
  virtual ~COrlDialogBase() = default;

  /// Colours a control of one kind (CTLCOLOR_...) and returns the brush of its background.
  /// @param control the control that asks; the style of an edit control counts
  HBRUSH ControlColour(CDC& dc, HWND control, UINT kind) const;

  /// Fills from the first colour to the second; a vertical gradient begins at the bottom. One line
  /// more than the extent is painted, so that the last one reaches the edge of an adjoining frame.
  static void PaintGradient(CDC& dc, const RECT& rect, COLORREF first, COLORREF second,
                            GradientDirection direction);
  /// Draws two nested rings one pixel wide, the outer one along the rectangle. Styles 4 and 5 have
  /// no inner ring.
  static void PaintBevel(CDC& dc, const RECT& rect, int style);
  static void PaintPlain(CDC& dc, const RECT& rect);

 protected:
  // Owned by the application object. Null before the library has started and after it has ended; at
  // the end of a process a window may still exist then.
  CBrush* const& darkBrush;
  CBrush* const& blackBrush;
  int32_t systemLook = 0;  // non-zero: colours and drawing are the system's; never set
};
