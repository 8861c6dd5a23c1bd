// SPDX-License-Identifier: MIT
#include "library/api/velquin_app.h"

#include "framework/base/message_box.h"
#include "library/ui/orl_message_box.h"
#include "library/ui/shared_brushes.h"
#include "res/string_ids.h"

BOOL CVelquinApp::InitInstance() {
  if (!AfxSocketInit()) {
    AfxMessageBox(kTextSocketsFailed);
    return FALSE;
  }
  CreateSharedBrushes();
  return TRUE;
}

int CVelquinApp::ExitInstance() {
  DeleteSharedBrushes();
  return CWinApp::ExitInstance();
}

int CVelquinApp::DoMessageBox(LPCSTR prompt, UINT type, UINT) {
  // The library does not have a main window, so the parent is the active window of the calling
  // thread: it is disabled until the user answers. The worker has no window, so its boxes block no
  // other window.
  COrlMessageBox box(::GetActiveWindow(), prompt, type);
  return static_cast<int>(box.DoModal());
}
