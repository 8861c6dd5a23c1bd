// SPDX-License-Identifier: MIT
#include "library/api/module_frame.h"

#include "framework/win/instance.h"
#include "framework/win/module_calls.h"
#include "library/api/module_object.h"
#include "library/api/velquin_app.h"
#include "library/engine/telescope.h"
#include "library/ui/controller_window.h"

namespace {

// How long unloading waits for a window's thread that is in the library. Painting takes some
// milliseconds; a longer wait would mean a deadlock between the two.
constexpr DWORD kCallsTimeoutMs = 2000;

// In this order: the engine is built before the application object and destroyed after it.
CModuleObject<CTelescope> engineObject;
CModuleObject<CVelquinApp> appObject;

}  // namespace

CTelescope& TheTelescope() {
  return engineObject.Get();
}

bool ModuleAttached() {
  CVelquinApp& app = appObject.Get();
  app.SetCurrentHandles();
  TheTelescope().SetControllerWindowFactory(&CControllerWindow::Open);
  return app.InitInstance() != FALSE;
}

void ModuleDetaching(bool processEnds) {
  if (processEnds && !engineObject.Get().IsIdle()) {
    engineObject.Abandon();
    appObject.Abandon();
    return;
  }
  AfxSetUnloading();
  // The window closes before its brushes are deleted. At the end of the process, a stopped thread
  // may hold the engine's lock.
  if (!processEnds) {
    TheTelescope().ShowController(false);
    AfxLetCallsReturn(kCallsTimeoutMs);
  }
  appObject.Get().ExitInstance();
}
