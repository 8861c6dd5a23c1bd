// SPDX-License-Identifier: MIT
// COrlDialogBase: the dark look's brushes, control colours and shared drawing. A second base class
// of every dialog and control of the family. UI thread only.
#pragma once

#include "framework/win/dc.h"

class COrlDialogBase {
 public:
  enum class GradientDirection { kHorizontal, kVertical };

  COrlDialogBase();
  virtual ~COrlDialogBase() = default;

  /// Colours a control of one kind (CTLCOLOR_...) and tells the brush of its ground.
  /// @param control the control that asks; its style counts for edits
  HBRUSH ControlColour(CDC& dc, HWND control, UINT kind) const;

  /// Fills from the first colour to the second; vertically the first lies at the bottom. One line
  /// more than the extent is painted, so that the last one reaches the edge of an adjoining frame.
  static void PaintGradient(CDC& dc, const RECT& rect, COLORREF first, COLORREF second,
                            GradientDirection direction);
  /// Two nested one-pixel rings, the outer one along the rectangle; styles 4 and 5 have no inner
  /// one.
  static void PaintBevel(CDC& dc, const RECT& rect, int style);
  static void PaintPlain(CDC& dc, const RECT& rect);

 protected:
  // The application object's, not owned. Null before the library has started and after it has
  // ended: at the end of a process a window may still stand then.
  CBrush* const& darkBrush;
  CBrush* const& blackBrush;
  int32_t systemLook = 0;  // set: colours and drawing are the system's; nothing sets it
};
