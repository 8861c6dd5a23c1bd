// SPDX-License-Identifier: MIT
// CPaintCaption: paints a dialog's caption and frame and runs its caption buttons. Owned by the
// dialog; UI thread only. Coordinates are relative to the window's upper left corner.
#pragma once

#include <vector>

#include "framework/win/dc.h"

/// A dialog-specific caption button. The library's dialogs have none.
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
  /// The same, with the active state of the last call.
  void Repaint(HWND window) { Paint(window, lastActive); }

  /// @param screen position of the pointer
  /// @return HTCLOSE, HTMAXBUTTON or HTMINBUTTON over such a button, else HTNOWHERE
  LRESULT HitTest(HWND window, CPoint screen);
  /// @return whether a hit is on a caption button.
  static bool IsButton(LRESULT hit) { return ButtonOf(hit) != kNoButton; }
  /// The pointer is over the caption, or a button is held. @return true if the pointer has just
  /// reached a button.
  bool PointerMoved(HWND window, LRESULT hit);
  /// The pointer has left the caption.
  void PointerLeft(HWND window);
  /// Captures the mouse for the window until the release. @return true if the press was on a button
  /// and is handled.
  bool ButtonPressed(HWND window, LRESULT hit);
  /// Runs the pressed button if the mouse is released over it. @return true if handled.
  bool ButtonReleased(HWND window, LRESULT hit);
  /// Forgets a press, for example after the mouse capture was lost: no release will come.
  void CancelPress(HWND window);
  /// A caption button is held; the mouse messages then go to the client area.
  bool IsPressed() const { return pressed; }

  /// Adds dialog-specific caption buttons. @param bitmapId their images @param count how many
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
  int pressedButton = kNoButton;  // was pressed and is not released yet
  bool pressed = false;           // the left button is down on a caption button
  bool hasCustomButtons = false;
  std::vector<tagCustomButtonInfo> customButtons;
  CRect customArea;
  CRect customHover;
  CBitmap customBitmap;

  static constexpr int kNoButton = -999;
};
