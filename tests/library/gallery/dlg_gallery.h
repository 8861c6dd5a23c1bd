// SPDX-License-Identifier: MIT
// CDlgGallery: one dialog that shows every control of the dark family in every state, for a person
// to look at. Not shipped. UI thread only.
#pragma once

#include <memory>
#include <vector>

#include "library/ui/orl_button.h"
#include "library/ui/orl_dialog.h"
#include "library/ui/orl_edit.h"
#include "library/ui/orl_group_box.h"
#include "library/ui/orl_radio_button.h"
#include "library/ui/orl_slider.h"
#include "library/ui/orl_spin_button.h"
#include "library/ui/orl_static.h"

class CDlgGallery : public COrlDialog {
 public:
  CDlgGallery();

 protected:
  DECLARE_MESSAGE_MAP()

  BOOL OnInitDialog() override;
  BOOL OnEraseBkgnd(HDC dc);

 private:
  // A control of the given class, kept until the dialog goes.
  template <typename Control>
  Control& New() {
    auto control = std::make_unique<Control>();
    Control& made = *control;
    controls.push_back(std::move(control));
    return made;
  }

  void AttachButtons();
  void AttachRadioButtons();
  void AttachEditsAndSpins();
  void AttachSliders();
  void AttachStatics();
  void AttachGroups();

  std::vector<std::unique_ptr<CWnd>> controls;
};
