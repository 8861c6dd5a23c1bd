// SPDX-License-Identifier: MIT
#include "library/ui/controller_window.h"

#include "framework/win/instance.h"
#include "library/ui/dlg_controller.h"

namespace {

// Keeps the common controls loaded. The speed slider runs their code until the window's thread has
// destroyed it. On another thread that is after this library is unloaded, and the rest of the
// process may not have loaded that code.
void KeepControlsLoaded() {
  HMODULE controls = nullptr;
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN, "comctl32.dll", &controls);
}

}  // namespace

IControllerWindow* CControllerWindow::Open(CTelescope& engine, const CString& vendor,
                                           const CString& name, HWND owner) {
  // Registers the trackbar's class with the system; repeated calls do no harm.
  INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
  ::InitCommonControlsEx(&classes);
  // The host may have destroyed its window since it passed the handle.
  HWND parent = ::IsWindow(owner) ? owner : nullptr;
  auto* dialog = new CDlgController(&engine, vendor, name, parent);
  dialog->HoldByCaller();
  if (dialog->COrlDialog::Create()) return new CControllerWindow(*dialog);
  dialog->Release();
  return nullptr;
}

CControllerWindow::~CControllerWindow() {
  dialog.LeaveEngine();
  if (AfxIsUnloading()) KeepControlsLoaded();
  dialog.CloseFromAnyThread();
  dialog.Release();
}
