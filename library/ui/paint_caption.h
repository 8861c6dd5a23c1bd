// SPDX-License-Identifier: MIT
// CPaintCaption: paints a dialog's caption and frame and runs its caption buttons. Owned by the
// dialog; UI thread only. Coordinates are those of the window, its corner being (0, 0).
#pragma once

#include <vector>

#include "framework/win/dc.h"

/// A caption button of a dialog's own. No dialog of the library has any.
struct tagCustomButtonInfo {
  CRect rect;
  UINT command = 0;
};

class CPaintCaption {
 public:
  CPaintCaption();
  virtual ~CPaintCaption() = default;
  CPaintCaption(const CPaintCaption&) = delete;
  CPaintCaption& operator=(const CPaintCaption&) = delete;

  /// Paints caption, frame, text and buttons of a window that is not minimised.
  void Paint(HWND window, bool active);
  /// The same with the active state of the last time.
  void Repaint(HWND window) { Paint(window, lastActive); }

  /// @param screen where the pointer is @return HTCLOSE, HTMAXBUTTON or HTMINBUTTON on such a
  /// button,
  ///        else HTNOWHERE
  LRESULT HitTest(HWND window, CPoint screen);
  /// @return whether a hit is one on a caption button.
  static bool IsButton(LRESULT hit) { return ButtonOf(hit) != kNoButton; }
  /// The pointer is over the caption, or a button is held. @return true when it has just come to a
  /// button.
  bool PointerMoved(HWND window, LRESULT hit);
  /// The pointer has left the caption.
  void PointerLeft(HWND window);
  /// Takes the mouse for the window until the release. @return true when the press was on a button
  /// and is dealt with.
  bool ButtonPressed(HWND window, LRESULT hit);
  /// Carries out the pressed button when it is released over itself. @return true when dealt with.
  bool ButtonReleased(HWND window, LRESULT hit);
  /// Forgets a press, as when the mouse was taken away and the release will not come.
  void CancelPress(HWND window);
  /// A caption button is held down; the mouse's messages come to the client area then.
  bool IsPressed() const { return pressed; }

  /// Gives the caption buttons of its own. @param bitmapId their images @param count how many
  void SetCustomButtons(UINT bitmapId, int count);
  void ClearCustomButtons();

 private:
  enum Button { kClose = 0, kMaximise = 1, kMinimise = 2, kButtonCount = 4 };

  void PlaceButtons(HWND window, const CRect& frame);
  void PaintFrame(CDC& dc, const CRect& frame, bool active) const;
  void PaintText(CDC& dc, HWND window, const CRect& frame, bool active) const;
  void PaintButtons(CDC& dc, HWND window, bool active);
  void PaintButton(CDC& dc, const CDC& images, const CRect& rect, int row, int column) const;
  int Column(int button, bool active) const;
  static int ButtonOf(LRESULT hit);

  CBitmap buttonBitmap;
  bool lastActive = true;
  CRect buttonRects[kButtonCount];
  int hoverButton = kNoButton;    // under the pointer
  int pressedButton = kNoButton;  // went down and has not been released yet
  bool pressed = false;           // the left button is down on one
  bool hasCustomButtons = false;
  std::vector<tagCustomButtonInfo> customButtons;
  CRect customArea;
  CRect customHover;
  CBitmap customBitmap;

  static constexpr int kNoButton = -999;
};
