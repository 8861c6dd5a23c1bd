// SPDX-License-Identifier: MIT
// CDlgController: the hand-controller window. Modeless; made and deleted by the engine on the
// thread that runs its messages. Every control ends in one call of the engine.
//
// The direction buttons are not clicked but watched: a timer looks every 100 ms which are held,
// tells the engine so each time, and tells it once when one has been let go.
#pragma once

#include <array>

#include "engine/controller_window.h"
#include "framework/base/cstring.h"
#include "ui/orl_button.h"
#include "ui/orl_dialog.h"
#include "ui/orl_slider.h"

class CDlgController : public COrlDialog, public IControllerWindow {
 public:
  /// @param newEngine not owned; outlives the window
  CDlgController(CTelescope* newEngine, const CString& vendor, const CString& title, HWND parent);
  ~CDlgController() override;

  /// Makes the window. As ControllerWindowFactory.
  static IControllerWindow* Open(CTelescope& engine, const CString& vendor, const CString& name,
                                 HWND owner);

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
  void PollDirections();
  void EnableControls() const;
  void ShowDetail();

  int speedIndex = 0;
  int32_t initialised = 0;
  CTelescope* engine;
  std::array<int32_t, kDirections> pressed = {};
  std::array<int32_t, kDirections> previouslyPressed = {};
  CString vendorText;  // kept, not shown
  CString titleText;   // the caption when it is not empty
  std::array<COrlButton, kDirections> directionButtons;
  COrlSlider speedSlider;
  COrlButton gotoButton;
  COrlButton syncButton;
  COrlButton stopButton;
  COrlButton homeButton;
};
