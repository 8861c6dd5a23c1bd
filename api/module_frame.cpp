// SPDX-License-Identifier: MIT
#include "api/module_frame.h"

#include "api/module_object.h"
#include "api/velquin_app.h"
#include "engine/telescope.h"
#include "ui/dlg_controller.h"

namespace {

// In this order: the engine is there before the application object and goes after it.
CModuleObject<CTelescope> engineObject;
CModuleObject<CVelquinApp> appObject;

}  // namespace

CTelescope& TheTelescope() {
  return engineObject.Get();
}

bool ModuleAttached() {
  CVelquinApp& app = appObject.Get();
  app.SetCurrentHandles();
  TheTelescope().SetControllerWindowFactory(&CDlgController::Open);
  return app.InitInstance() != FALSE;
}

void ModuleDetaching(bool processEnds) {
  if (processEnds && !engineObject.Get().IsIdle()) {
    engineObject.Abandon();
    appObject.Abandon();
    return;
  }
  appObject.Get().ExitInstance();
}
