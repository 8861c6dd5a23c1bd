// SPDX-License-Identifier: MIT
// What the tests of the dark controls share: a parent window with known ground and font, controls
// of the system on it, and the messages that a person's hands would send.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <vector>

#include "framework/base/win_app.h"
#include "framework/win/controls.h"
#include "library/ui/shared_brushes.h"
#include "tests/library/ui/picture.h"

/// A window that keeps the commands that come to it and shows a ground the test chooses.
class ParentWindow : public CWnd {
 public:
  struct Command {
    UINT id;
    UINT code;
    HWND control;
    bool operator==(const Command&) const = default;
  };

  ParentWindow();
  ~ParentWindow() override;

  std::vector<Command> commands;
  /// The colour of one row of the ground.
  std::function<Colour(int)> ground = [](int) { return Colour(34, 34, 34); };

 protected:
  DECLARE_MESSAGE_MAP()

  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
  BOOL OnEraseBkgnd(HDC dc);
  LRESULT OnGetFont(WPARAM wParam, LPARAM lParam);

 private:
  CFont font;  // not smoothed, so that a pixel has either the text's colour or the ground's
};

class ControlFixture : public testing::Test {
 protected:
  static constexpr UINT kId = 77;

  ControlFixture();
  ~ControlFixture() override { DeleteSharedBrushes(); }

  /// Adds a control with number kId.
  HWND Add(const char* className, const char* text, DWORD style, const CRect& place,
           UINT id = kId) const;
  /// Handles every message that waits.
  static void Pump();
  static void Press(HWND control, CPoint point);
  static void MoveTo(HWND control, CPoint point);
  static void Release(HWND control, CPoint point);

  CWinApp app{"Velquin"};
  ParentWindow parent;
};
