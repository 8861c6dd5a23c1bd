// SPDX-License-Identifier: MIT
#include "library/ui/controller_window.h"

#include "framework/win/instance.h"
#include "library/ui/dlg_controller.h"

namespace {

// The speed slider runs the common controls' code until the window's thread has taken it down,
// which on another thread is after this library has gone; and nobody else may have that code
// loaded.
void KeepControlsLoaded() {
  HMODULE controls = nullptr;
  ::GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN, "comctl32.dll", &controls);
}

}  // namespace

IControllerWindow* CControllerWindow::Open(CTelescope& engine, const CString& vendor,
                                           const CString& name, HWND owner) {
  // Registers the trackbar's class with the system; more than once does no harm.
  INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES};
  ::InitCommonControlsEx(&classes);
  // The host's window may have gone since it was handed over.
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
