// SPDX-License-Identifier: MIT
// CDlgController: the hand-controller window. Modeless; CControllerWindow opens and closes it for
// the engine. Every control makes one call of the engine.
//
// The direction buttons do not handle clicks. Every 100 ms a timer reads which buttons are held and
// calls the engine for each of them, and once more when a button is released.
#pragma once

#include <array>
#include <atomic>

#include "framework/base/cstring.h"
#include "library/ui/orl_button.h"
#include "library/ui/orl_dialog.h"
#include "library/ui/orl_slider.h"

class CTelescope;

class CDlgController : public COrlDialog {
 public:
  /// @param newEngine not owned; outlives the window. Null: the controls do nothing
  CDlgController(CTelescope* newEngine, const CString& vendor, const CString& title, HWND parent);
  ~CDlgController() override;

  /// From now on the controls do nothing. Any thread; does not wait for a call in progress.
  void LeaveEngine() { engine = nullptr; }

 protected:
  DECLARE_MESSAGE_MAP()

  void DoDataExchange(CDataExchange* exchange) override;
  BOOL OnInitDialog() override;
  void OnTimer(UINT_PTR id);
  void OnGoto();
  void OnSync();
  void OnStop();
  void OnHome();

 private:
  static constexpr size_t kDirections = 4;  // north, south, east, west

  void AttachControls();
  void PollDirections(CTelescope& telescope);
  void EnableControls(CTelescope& telescope) const;
  void ShowDetail();

  int speedIndex = 0;
  int32_t initialised = 0;
  std::atomic<CTelescope*> engine;
  std::array<int32_t, kDirections> pressed = {};
  std::array<int32_t, kDirections> previouslyPressed = {};
  CString vendorText;  // stored, not shown
  CString titleText;   // the caption, unless it is empty
  std::array<COrlButton, kDirections> directionButtons;
  COrlSlider speedSlider;
  COrlButton gotoButton;
  COrlButton syncButton;
  COrlButton stopButton;
  COrlButton homeButton;
};
