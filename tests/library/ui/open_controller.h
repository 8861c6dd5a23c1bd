// SPDX-License-Identifier: MIT
// A hand controller over an engine of its own, open on a host's thread.
#pragma once

#include <memory>
#include <string>

#include "library/engine/telescope.h"
#include "library/ui/controller_window.h"
#include "tests/library/ui/app_environment.h"
#include "tests/library/ui/ui_thread.h"
#include "tests/library/ui/window_tools.h"

namespace ui_test {

class OpenController {
 public:
  /// @param title the engine's name; empty for none
  explicit OpenController(const std::string& title = "") {
    App();
    engine.SetName(title.c_str());
    engine.SetControllerWindowFactory(&CControllerWindow::Open);
    host.Do([&] { engine.ShowController(true); });
    window = WaitForDialogWith(3010);
  }
  ~OpenController() {
    host.Do([&] { engine.ShowController(false); });
    engine.End();
  }
  OpenController(const OpenController&) = delete;
  OpenController& operator=(const OpenController&) = delete;

  CTelescope engine;
  const UiThread host;
  HWND window = nullptr;
};

}  // namespace ui_test
